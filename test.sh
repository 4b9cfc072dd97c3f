#!/bin/sh
# Every test: installs what it needs, builds, runs.
set -eu
cd "$(dirname "$0")"
cmake/dependencies.sh
cmake --preset release -DCMAKE_CXX_COMPILER_LAUNCHER=ccache -DMORVANE_TESTS=ON >/dev/null
cmake --build --preset release
ctest --preset release "$@"
