#!/bin/sh
# Prints how much of the plug-in's lines and branches the tests run, and fails below 95 % and 85 %.
# Branches that only an exception of the standard library takes are left out: the boundary's own tests inject those.
set -eu
cd "$(dirname "$0")/.."
cmake/dependencies.sh gcovr
cmake --preset coverage -DCMAKE_CXX_COMPILER_LAUNCHER=ccache -DMORVANE_TESTS=ON >/dev/null
cmake --build --preset coverage
find build/coverage/src -name '*.gcda' -delete
# Their counters would have to be merged from processes that run side by side, which gcov does by file locks.
ctest --preset coverage --output-log build/coverage/tests.log >/dev/null || {
    tail -40 build/coverage/tests.log
    exit 1
}
gcovr --root . --filter 'src/' --object-directory build/coverage/src --exclude-throw-branches \
    --exclude-unreachable-branches --sort-percentage --txt build/coverage/coverage.txt \
    --fail-under-line 95 --fail-under-branch 85 --print-summary build/coverage/src
cat build/coverage/coverage.txt
