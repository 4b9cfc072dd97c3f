#!/bin/sh
# The dependency arrows of the architecture: src -> interface <- host; workbench, tests, bench -> host.
set -eu
cd "$(dirname "$0")/.."
bad=0
complain() {
    echo "$1" >&2
    bad=1
}
ours='#include "'
if grep -rnE '#include <' src --include=*.cpp --include=*.h |
    grep -vE '#include <(maya/[A-Za-z0-9]+\.h|nlohmann/json\.hpp|nanoflann\.hpp|[a-z_0-9]+)>'; then
    complain "src/ may include <maya/...>, nlohmann/json, nanoflann, the standard library and itself only"
fi
if grep -rnE "$ours(graph|nodes|selection|mel|undo|tools|view|scene|plugins|types)/" src; then
    complain "src/ must not include the host's own headers"
fi
if grep -rniE 'morvane' host --include=*.cpp --include=*.h; then
    complain "host/ must not know the plug-in"
fi
if grep -rnE "$ours(workbench|src)/" host --include=*.cpp --include=*.h; then
    complain "host/ must not include the workbench or the plug-in"
fi
if grep -rnE 'morvaneContext\.h|morvaneToolCommand\.h|helperFunctions\.h' workbench --include=*.cpp --include=*.h; then
    complain "workbench/ must speak to the plug-in by MEL only"
fi
exit $bad
