#!/bin/sh
# clang-tidy over the sources that are named on the standard input; what it found stands together at the end.
set -eu
found=$(mktemp)
trap 'rm -f "$found"' EXIT
if ! xargs -r -P "$(nproc)" -n 2 clang-tidy --quiet -p build/debug >"$found" 2>/dev/null; then
    cat "$found"
    echo "clang-tidy found:"
    grep -E '(error|warning): ' "$found" | sort -u
    exit 1
fi
