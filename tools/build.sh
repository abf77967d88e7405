# Sourced by the scripts: build <preset> [cmake --build arguments] configures and builds quietly, and shows
# the end of the log when it fails.
build() {
    preset=$1
    shift
    mkdir -p "build/$preset"
    # The same relative paths in every clone let ccache find what was compiled elsewhere; precompiled headers
    # need the rest.
    export CCACHE_BASEDIR="$PWD" CCACHE_NOHASHDIR=1
    export CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime
    echo "Building ($preset) ..." >&2
    if ! { cmake --preset "$preset" && cmake --build --preset "$preset" "$@"; } >"build/$preset/build.log" 2>&1; then
        tail -n 60 "build/$preset/build.log" >&2
        echo "The build failed; the whole log is build/$preset/build.log" >&2
        return 1
    fi
}
