# Sourced by the scripts. build <preset> [cmake --build arguments] configures and builds without output; on failure it
# shows the end of the log.
build() {
    preset=$1
    shift
    mkdir -p "build/$preset"
    # Relative paths let ccache reuse files compiled in another clone. Precompiled headers need the sloppiness
    # settings.
    export CCACHE_BASEDIR="$PWD" CCACHE_NOHASHDIR=1
    export CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime
    echo "Building ($preset) ..." >&2
    if ! { cmake --preset "$preset" && cmake --build --preset "$preset" "$@"; } >"build/$preset/build.log" 2>&1; then
        tail -n 60 "build/$preset/build.log" >&2
        echo "The build failed; the whole log is build/$preset/build.log" >&2
        return 1
    fi
}
