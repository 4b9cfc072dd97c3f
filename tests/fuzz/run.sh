#!/bin/sh
# Fuzzes for SECONDS each target that exists, or the ones named: tests/fuzz/run.sh SECONDS [TARGET ...]
# What is found on the way is kept in build/fuzz/found; an input that does harm in build/fuzz/harm, and is named.
set -eu
seconds="${1:?usage: tests/fuzz/run.sh SECONDS [TARGET ...]}"
shift
cd "$(dirname "$0")/../.."
top="$PWD"
cmake --preset fuzz -DCMAKE_CXX_COMPILER_LAUNCHER=ccache >/dev/null
cmake --build --preset fuzz >&2

names="$*"
if [ -z "$names" ]; then
    for program in build/fuzz/bin/fuzz_*; do
        names="$names ${program#build/fuzz/bin/fuzz_}"
    done
fi

# Freed memory is not kept for long, and leaks are looked for at the end, not after each input: that takes as long
# as the input itself.
export ASAN_OPTIONS="quarantine_size_mb=16:malloc_context_size=8:detect_leaks=1:allocator_may_return_null=0"
export UBSAN_OPTIONS="print_stacktrace=1"
mkdir -p build/fuzz/harm
harm=0
for name in $names; do
    found="$top/build/fuzz/found/$name"
    scratch="$top/build/fuzz/scratch/$name"
    log="$top/build/fuzz/$name.log"
    mkdir -p "$found" "$scratch"
    dictionary=""
    if [ -f "$top/tests/fuzz/$name.dict" ]; then
        dictionary="-dict=$top/tests/fuzz/$name.dict"
    fi
    echo "== $name"
    # shellcheck disable=SC2086
    if (cd "$scratch" && "$top/build/fuzz/bin/fuzz_$name" -max_total_time="$seconds" -max_len=4096 \
        -timeout=20 -rss_limit_mb=4096 -malloc_limit_mb=64 -detect_leaks=0 -print_final_stats=1 $dictionary \
        -artifact_prefix="$top/build/fuzz/harm/$name-" "$found" "$top/tests/fuzz/corpus/$name") >"$log" 2>&1; then
        tail -8 "$log"
    else
        harm=1
        tail -40 "$log"
        echo "harm: $(sed -n 's/.*Test unit written to //p' "$log" | tail -1)"
        echo "replay: build/fuzz/bin/fuzz_$name FILE"
    fi
done
exit "$harm"
