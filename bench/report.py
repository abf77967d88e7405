#!/usr/bin/env python3
"""Runs the benchmark programs and prints one table of jobs with their baselines from the same run."""

import argparse
import glob
import json
import os
import subprocess
import sys

UNITS = {"ns": 1, "us": 1e3, "ms": 1e6, "s": 1e9}


# Messages that a platform without a screen or session prints hundreds of times; they do not concern a job.
NOISE = ("This plugin does not support propagateSizeHints()", "This plugin does not support raise()",
         "QStandardPaths: XDG_RUNTIME_DIR not set", "QStandardPaths: wrong permissions on runtime directory")


def finished(command):
    """Runs the program and returns its output; passes its messages on, except those in NOISE."""
    done = subprocess.run(command, env=environment(), stdout=subprocess.PIPE, stderr=subprocess.PIPE, check=False)
    for line in done.stderr.decode(errors="replace").splitlines():
        if not line.startswith(NOISE):
            print(line, file=sys.stderr)
    if done.returncode != 0:
        sys.exit(f"{os.path.basename(command[0])} failed with status {done.returncode}")
    return done.stdout.decode()


def jobs_of(program, words):
    """The names of a program's jobs; with words, only those that contain one of the words."""
    listed = finished([program, "--benchmark_list_tests=true"])
    names = (line.partition("/")[0].partition(".baseline.")[0] for line in listed.split())
    return [job for job in dict.fromkeys(names) if not words or any(word in job for word in words)]


def environment():
    return dict(os.environ, QT_QPA_PLATFORM="offscreen", LC_ALL="C.UTF-8")


def run(program, job):
    """The best of nine runs of a job and its baselines in nanoseconds of processor time, by name.

    The best run counts, because a disturbance can only make a run slower. The runs of a job and its baseline
    alternate, so that a slow phase of the machine affects both. They have a process of their own, so that the
    memory use of other jobs does not affect them.
    """
    command = [program, "--benchmark_format=json", "--benchmark_repetitions=9",
               "--benchmark_enable_random_interleaving=true", "--benchmark_min_time=0.05",
               "--benchmark_filter=^" + job.replace(".", "[.]") + "([.]baseline[.].*)?/"]
    text = finished(command)
    best = {}

    def least(name, value):
        best[name] = min(value, best.get(name, value))

    for entry in json.loads(text[text.index("{"):])["benchmarks"]:
        if entry.get("error_occurred"):
            sys.exit(f"{entry['name']}: {entry['error_message']}")
        if entry["run_type"] != "iteration":
            continue
        # Options such as iterations:1 or manual_time follow the size and are not part of the name.
        name = "/".join(part for part in entry["run_name"].split("/")
                        if ":" not in part and not part.endswith("_time"))
        # All jobs run in one thread. Other load on the machine does not increase its processor time.
        least(name, entry["cpu_time"] * UNITS[entry["time_unit"]])
        if "bytes" in entry:  # memory is compared like time, as a separate job
            job, _, size = name.partition("/")
            job, mark, which = job.partition(".baseline.")
            least(f"{job}.bytes{mark}{which}/{size}", entry["bytes"])
    return best


def bounds_of(path):
    bounds = []
    with open(path, encoding="utf-8") as lines:
        for line in lines:
            words = line.split("#")[0].split()
            if words:
                bounds.append((words[0], words[1], float(words[2])))
    return bounds


def pairs(best, bounds):
    """(job, size, baseline name, best run, baseline's best run, bound or None), each pair once."""
    limit = {(job, against): bound for job, against, bound in bounds}
    for name in sorted(best):
        job, _, size = name.partition("/")
        if ".baseline." in job:
            continue
        for other in sorted(best):
            other_job, _, other_size = other.partition("/")
            prefix, mark, which = other_job.partition(".baseline.")
            if mark and prefix == job and other_size == size:
                yield job, size, which, best[name], best[other], limit.pop((name, which), None)
    for (name, against), bound in limit.items():
        if against.startswith("=") and name in best and against[1:] in best:
            job, _, size = name.partition("/")
            yield job, size, against, best[name], best[against[1:]], bound
        else:
            yield name, "", against, None, None, bound


def shown(job, value):
    if value is None:
        return "-"
    if job.endswith(".bytes"):
        return f"{value:.3g} B"
    for unit, factor in (("s", 1e9), ("ms", 1e6), ("us", 1e3)):
        if value >= factor:
            return f"{value / factor:.3g} {unit}"
    return f"{value:.3g} ns"


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--programs", required=True)
    parser.add_argument("--bounds", required=True)
    parser.add_argument("--check", action="store_true", help="fail when a ratio is over its bound")
    parser.add_argument("words", nargs="*", help="only jobs whose name has one of these words")
    options = parser.parse_args()

    programs = {}
    for program in sorted(glob.glob(os.path.join(options.programs, "bench_*"))):
        programs.update((job, program) for job in jobs_of(program, options.words))
    bounds = bounds_of(options.bounds)
    if options.words:
        bounds = [bound for bound in bounds if any(word in bound[0] for word in options.words)]
    best = {}

    def measure(jobs):
        for job in jobs:
            print("running", job, "...", file=sys.stderr)
            for name, value in run(programs[job], job).items():
                best[name] = min(value, best.get(name, value))

    measure(programs)
    # Processors change their speed, so a job fails only when it is too slow in each of three measurements.
    for _ in range(2):
        measure(sorted({job.removesuffix(".bytes") for job, _, _, value, baseline, bound in pairs(best, bounds)
                        if bound is not None and baseline and value / baseline > bound}))

    layout = "{:<44} {:>9} {:>11} {:<26} {:>11} {:>8} {:>7}  {}"
    print(layout.format("job", "size", "best", "baseline", "best", "ratio", "bound", ""))
    failed = 0
    for job, size, which, value, baseline, bound in pairs(best, bounds):
        ratio = value / baseline if value is not None and baseline else None
        verdict = ""
        if bound is not None:
            good = ratio is not None and ratio <= bound
            verdict = "ok" if good else "OVER" if ratio is not None else "NOT MEASURED"
            failed += not good
        print(layout.format(job, size, shown(job, value), which, shown(job, baseline),
                            "-" if ratio is None else f"{ratio:.3f}", "-" if bound is None else f"{bound:g}", verdict))
    if failed:
        print(f"{failed} ratio(s) over the bound or not measured", file=sys.stderr)
    return 1 if options.check and failed else 0


if __name__ == "__main__":
    sys.exit(main())
