#!/bin/sh
# A small search in four parts, of which one is lost and one is interrupted, against the same search in one:
# check.sh ORVA_CLI. Needs GNU parallel; of Slurm only its variables.
set -eu
ORVA_CLI=$(realpath "$1")
export ORVA_CLI
cd "$(dirname "$0")/.."
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
set -- examples/theatre.lad --area 2 --all-speakers --points 50

fail() {
    echo "check-scale: $1" >&2
    exit 1
}
best() { sed -n '/^  "best": /p' "$1"; }
# That the parts in a folder give the whole search.
joined() {
    "$ORVA_CLI" optimize --merge "$1"/*.json > "$work/merged.json"
    [ -n "$(best "$work/whole.json")" ] || fail "the whole search has no best"
    [ "$(best "$work/merged.json")" = "$(best "$work/whole.json")" ] || fail "$1: another best than that of the whole search"
    grep -q '"tested": 16384,' "$work/merged.json" || fail "$1: not all was tested"
}
# Runs what is missing, and tells which files came.
resumed() {
    touch -d 2000-01-01 "$1"/*.json
    "$2" "$1" examples/theatre.lad --area 2 --all-speakers --points 50
    (cd "$1" && find . -name '*.json' -newermt 2001-01-01 | sort | tr '\n' ' ')
}
with_parallel() {
    folder=$1
    shift
    seq 0 3 | parallel --will-cite -q -j 2 scale/orva-part.sh 4 {} "$folder" "$@" --threads 1
}
# The tasks of an array as Slurm starts them: a copy of the script, with these variables.
with_slurm() {
    cp scale/orva-search.sbatch "$work/slurm_script"
    for task in 0 1 2 3; do
        SLURM_SUBMIT_DIR=$PWD SLURM_ARRAY_TASK_ID=$task SLURM_ARRAY_TASK_COUNT=4 SLURM_CPUS_PER_TASK=2 \
            sh "$work/slurm_script" "$@"
    done
}

"$ORVA_CLI" optimize "$@" > "$work/whole.json"
for way in with_parallel with_slurm; do
    parts=$work/$way
    $way "$parts" "$@"
    joined "$parts"
    rm "$parts/8192.json"
    "$ORVA_CLI" optimize --merge "$parts"/*.json > "$work/gap.json" 2>&1 && fail "a lost part was not missed"
    [ "$(resumed "$parts" $way)" = "./8192.json " ] || fail "$way: not just the lost part was tested again"
    joined "$parts"
    # Ended by a signal after 1000 configurations; ended with nothing printed.
    "$ORVA_CLI" optimize "$@" --from 4096 --count 1000 > "$parts/4096.json"
    : > "$parts/12288.json"
    [ "$(resumed "$parts" $way)" = "./12288.json ./5096.json " ] || fail "$way: what was interrupted did not go on"
    joined "$parts"
done
echo "check-scale: parts, lost ones included, give the whole search"
