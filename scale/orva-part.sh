#!/bin/sh
# One of PARTS equal parts of a search: orva-part.sh PARTS INDEX FOLDER PROJECT.lad [options of optimize]
# INDEX counts from 0. Results lie in FOLDER, each named after its first configuration. What is there is not tested
# again; a part that was interrupted goes on where it ended. ORVA_CLI is the program (default: orva-cli).
set -eu
[ $# -ge 4 ] || { sed -n '2,4s/^# //p' "$0" >&2; exit 2; }
parts=$1 index=$2 folder=$3
shift 3
cli=${ORVA_CLI:-orva-cli}
mkdir -p "$folder"

# A figure of a result that is whole; nothing for any other file.
figure() {
    if [ "$(tail -n 1 "$2" 2>/dev/null)" = "}" ]; then
        sed -n "s/^  \"$1\": \([0-9]*\),*\$/\1/p" "$2"
    fi
}

case $parts$index in *[!0-9]*) parts=0 index=0 ;; esac
[ "$index" -lt "$parts" ] || { echo "orva-part.sh: INDEX is a number from 0 to below PARTS" >&2; exit 2; }

# As many for each part; the first ones take one more of what is left.
one=$("$cli" optimize "$@" --count 1)
all=$(printf '%s\n' "$one" | sed -n 's/^  "configurations": \([0-9]*\),*$/\1/p')
size=$((all / parts)) left=$((all % parts))
from=$((index * size + (index < left ? index : left)))
end=$((from + size + (index < left ? 1 : 0)))

while [ "$from" -lt "$end" ]; do
    tested=$(figure tested "$folder/$from.json")
    [ -n "$tested" ] || break
    from=$((from + tested))
done
[ "$from" -lt "$end" ] || exit 0
# In the place of this shell, so that every signal goes to the program.
exec "$cli" optimize "$@" --from "$from" --count $((end - from)) > "$folder/$from.json"
