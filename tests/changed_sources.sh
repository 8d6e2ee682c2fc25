#!/bin/sh
# The sources that differ from the state four hours before the last commit; all of them where the history ends there.
set -eu
last=$(git log -1 --format=%ct)
base=$(git rev-list -1 --before="$((last - 14400))" HEAD || true)
if [ -z "$base" ]; then
    git ls-files '*.cpp'
else
    {
        git diff --name-only --diff-filter=d "$base" -- '*.cpp'
        # a header is checked with one source that includes it
        for header in $(git diff --name-only --diff-filter=d "$base" -- '*.h'); do
            git grep -lF "#include \"${header#ui/}\"" -- '*.cpp' | head -n 1
        done
    } | sort -u
fi
