#!/bin/sh
# Builds the plug-in against a tree shaped like a devkit (include/maya and lib, made of the host's headers and
# library) as C++14 and C++17, and looks at what the library exports and what it leaves undefined.
# Usage: devkitTest.sh SOURCE_DIR HOST_LIBRARY WORK_DIR CXX [CMAKE_CXX_FLAGS]
set -eu
source=$1 host_library=$2 work=$3 compiler=$4 flags=${5:-}

rm -rf "$work"
mkdir -p "$work/devkit/include" "$work/devkit/lib"
cp -r "$source/host/include/maya" "$work/devkit/include/maya"
for name in Foundation OpenMaya OpenMayaUI OpenMayaAnim OpenMayaRender; do
    ln -s "$host_library" "$work/devkit/lib/lib$name.so"
done

failed=0
for standard in 14 17; do
    build=$work/build$standard
    cmake -S "$source" -B "$build" -G Ninja -DCMAKE_CXX_COMPILER="$compiler" -DCMAKE_CXX_FLAGS="$flags" \
        -DCMAKE_BUILD_TYPE=Release -DCMAKE_CXX_COMPILER_LAUNCHER="$(command -v ccache || true)" \
        -DMAYA_DEVKIT="$work/devkit" -DMORVANE_CXX_STANDARD=$standard >"$work/configure.log"
    cmake --build "$build" >"$work/build.log" || {
        cat "$work/build.log"
        exit 1
    }
    library=$(find "$build" -name morvane.so)
    for entry in 'initializePlugin(MObject)' 'uninitializePlugin(MObject)' 'MApiVersion'; do
        if ! nm -DC --defined-only "$library" | cut -d' ' -f3- | grep -qxF "$entry"; then
            echo "C++$standard: $entry is not exported"
            failed=1
        fi
    done
    strangers=$(nm -DC --undefined-only "$library" | sed 's/^ *[Uuvw] //' |
        grep -vE '@(GLIBC|GLIBCXX|CXXABI|GCC)_|^(_ITM_|__gmon_start__|__asan|__ubsan|__sanitizer)' |
        grep -vE '^(typeinfo for |vtable for |non-virtual thunk to )?(MHWRender::)?M[A-Z3]?[A-Za-z0-9]+(::|$)' |
        grep -vE '^operator(==|!=|\+|-|\*|<<)\(.*M[A-Z]' || true)
    if [ -n "$strangers" ]; then
        echo "C++$standard: undefined names that are not of the interface:"
        echo "$strangers"
        failed=1
    fi
done
[ $failed = 0 ] && echo "exports and undefined names are those of a plug-in"
exit $failed
