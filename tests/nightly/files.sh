#!/bin/bash
# What only takes too long for every day: a full disk, writers killed at random moments, a scene of 300 MB, in
# the release build. Usage: tests/nightly/files.sh [KILLS] [MEGABYTES]; prints figures, ends with 1 on harm.
set -euo pipefail
kills="${1:-200}"
megabytes="${2:-300}"
top="$(cd "$(dirname "$0")/../.." && pwd)"
program="$top/build/release/bin/morvane-workbench"
work="$(mktemp -d)"
mounted=""
finish() {
    [ -z "$mounted" ] || umount "$mounted"
    rm -rf "$work"
}
trap finish EXIT

harm() {
    echo "HARM: $*" >&2
    exit 1
}
run() { "$program" --batch --no-plug-in "$@"; }
parts() { find "$1" -name '*.part' | wc -l; }
sum() { md5sum <"$1"; }

echo "== a full disk"
mkdir "$work/disk"
if [ "$(id -u)" = 0 ] && mount -t tmpfs -o size=1m tmpfs "$work/disk" 2>/dev/null; then
    mounted="$work/disk"
    run -c 'polyCube' --save "$work/disk/scene.ma" --image "$work/disk/view.png"
    before="$(sum "$work/disk/scene.ma")$(sum "$work/disk/view.png")"
    dd if=/dev/zero of="$work/disk/filler" bs=1k 2>/dev/null || true
    for option in --save --image; do
        file="$work/disk/scene.ma"
        [ "$option" = --save ] || file="$work/disk/view.png"
        status=0
        run -c 'polyPlane -sx 100 -sy 100' "$option" "$file" 2>"$work/errors" || status=$?
        [ "$status" = 1 ] || harm "$option on a full disk ends with $status"
        grep -q "cannot be written: No space left on device" "$work/errors" || harm "$(cat "$work/errors")"
    done
    [ "$before" = "$(sum "$work/disk/scene.ma")$(sum "$work/disk/view.png")" ] || harm "an old file has changed"
    [ "$(parts "$work/disk")" = 0 ] || harm "a part is left"
    echo "refused, the old files are as they were"
else
    echo "skipped: only root may mount a small disk"
fi

echo "== killed $kills times while it saves"
mkdir "$work/kill"
file="$work/kill/scene.ma"
run -c 'polyPlane -sx 300 -sy 300' --save "$work/big.ma"
run "$work/big.ma" --save "$file"
new="$(sum "$file")"
run -c 'polySphere' --save "$work/small.ma"
old="$(sum "$work/small.ma")"
intact=0 replaced=0 left=0
for ((time = 0; time < kills; ++time)); do
    cp "$work/small.ma" "$file"
    "$program" --batch --no-plug-in "$work/big.ma" --save "$file" & # no function: its shell would be killed
    writer=$!
    sleep "0.$(printf %03d $((RANDOM % 900)))"
    kill -KILL "$writer" 2>/dev/null || true
    wait "$writer" 2>/dev/null || true
    case "$(sum "$file")" in
    "$old") intact=$((intact + 1)) ;;
    "$new") replaced=$((replaced + 1)) ;;
    *) harm "a killed writer left half a file" ;;
    esac
    left=$((left + $(parts "$work/kill")))
    [ "$(parts "$work/kill")" -le 1 ] || harm "parts pile up"
    run "$work/small.ma" --save "$file"
    [ "$(parts "$work/kill")" = 0 ] || harm "the next save has left the part of the killed one"
done
echo "old file $intact times, new file $replaced times, $left parts left and tidied up by the next save"

echo "== $megabytes MB"
run -c 'polyPlane -sx 1000 -sy 1000 -n one' --save "$work/one.ma"
{
    sed '/^createNode transform -n "one"/,$d' "$work/one.ma"
    size="$(stat -c %s "$work/one.ma")"
    for ((copy = 0; copy * size < megabytes * 1000000; ++copy)); do
        sed -n '/^createNode transform -n "one"/,/^createNode lightLinker/p' "$work/one.ma" |
            sed "/^createNode lightLinker/d;/rename -uid/d;s/\"one/\"copy${copy}_one/g"
    done
    echo "// End of scene"
} >"$work/huge.ma"
begin="$(date +%s.%N)"
run "$work/huge.ma" --save "$work/saved.ma"
end="$(date +%s.%N)"
run "$work/saved.ma" --save "$work/again.ma"
cmp "$work/saved.ma" "$work/again.ma" || harm "a huge scene is not saved alike"
echo "$(stat -c %s "$work/huge.ma") bytes opened and saved in $(echo "$end - $begin" | bc) s"
