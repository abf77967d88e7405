#!/usr/bin/env python3
"""Runs the benchmark programs and prints one table of jobs beside their yardsticks of the same run."""

import argparse
import glob
import json
import os
import subprocess
import sys

UNITS = {"ns": 1, "us": 1e3, "ms": 1e6, "s": 1e9}


def run(program, words):
    """The median of each benchmark of one program in nanoseconds of processor time, by its name."""
    command = [program, "--benchmark_format=json", "--benchmark_repetitions=5",
               "--benchmark_report_aggregates_only=true", "--benchmark_min_time=0.05"]
    environment = dict(os.environ, QT_QPA_PLATFORM="offscreen", LC_ALL="C.UTF-8")
    if words:
        command.append("--benchmark_filter=" + "|".join(words))
    done = subprocess.run(command, env=environment, stdout=subprocess.PIPE, check=False)
    if done.returncode != 0:
        sys.exit(f"{os.path.basename(program)} failed with status {done.returncode}")
    text = done.stdout.decode()
    medians = {}
    if "{" not in text:  # the filter left nothing of this program
        return medians
    for entry in json.loads(text[text.index("{"):])["benchmarks"]:
        if entry.get("error_occurred"):
            sys.exit(f"{entry['name']}: {entry['error_message']}")
        if entry.get("aggregate_name") != "median":
            continue
        # Options such as iterations:1 or manual_time stand behind the size and are no part of the name.
        name = "/".join(part for part in entry["run_name"].split("/")
                        if ":" not in part and not part.endswith("_time"))
        # All jobs run in the one thread: its time on the processor is not stretched by what else the machine does.
        medians[name] = entry["cpu_time"] * UNITS[entry["time_unit"]]
        for counter, value in entry.items():
            if counter == "bytes":  # memory is compared like time, as a job of its own
                job, _, size = name.partition("/")
                job, mark, which = job.partition(".yardstick.")
                medians[f"{job}.bytes{mark}{which}/{size}"] = value
    return medians


def bounds_of(path):
    bounds = []
    with open(path, encoding="utf-8") as lines:
        for line in lines:
            words = line.split("#")[0].split()
            if words:
                bounds.append((words[0], words[1], float(words[2])))
    return bounds


def pairs(medians, bounds):
    """(job, size, yardstick name, median, yardstick's median, bound or None), each pair once."""
    limit = {(job, against): bound for job, against, bound in bounds}
    for name in sorted(medians):
        job, _, size = name.partition("/")
        if ".yardstick." in job:
            continue
        for other in sorted(medians):
            other_job, _, other_size = other.partition("/")
            prefix, mark, which = other_job.partition(".yardstick.")
            if mark and prefix == job and other_size == size:
                yield job, size, which, medians[name], medians[other], limit.pop((name, which), None)
    for (name, against), bound in limit.items():
        if against.startswith("=") and name in medians and against[1:] in medians:
            job, _, size = name.partition("/")
            yield job, size, against, medians[name], medians[against[1:]], bound
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

    medians = {}
    for program in sorted(glob.glob(os.path.join(options.programs, "bench_*"))):
        print("running", os.path.basename(program), "...", file=sys.stderr)
        medians.update(run(program, options.words))
    bounds = bounds_of(options.bounds)
    if options.words:
        bounds = [bound for bound in bounds if any(word in bound[0] for word in options.words)]

    layout = "{:<44} {:>9} {:>11} {:<26} {:>11} {:>8} {:>7}  {}"
    print(layout.format("job", "size", "median", "yardstick", "median", "ratio", "bound", ""))
    failed = 0
    for job, size, which, median, yardstick, bound in pairs(medians, bounds):
        ratio = median / yardstick if median is not None and yardstick else None
        verdict = ""
        if bound is not None:
            good = ratio is not None and ratio <= bound
            verdict = "ok" if good else "OVER" if ratio is not None else "NOT MEASURED"
            failed += not good
        print(layout.format(job, size, shown(job, median), which, shown(job, yardstick),
                            "-" if ratio is None else f"{ratio:.3f}", "-" if bound is None else f"{bound:g}", verdict))
    if failed:
        print(f"{failed} ratio(s) over the bound or not measured", file=sys.stderr)
    return 1 if options.check and failed else 0


if __name__ == "__main__":
    sys.exit(main())
