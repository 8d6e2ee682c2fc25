# completion_test.sh ORVA-CLI COMPLETION: what bash offers behind beginnings of a line.
program=$(realpath "$1")
. "$2"
cd "$(mktemp -d)" && trap 'rm -rf "$PWD"' EXIT
mkdir rooms && touch venue.lad measured.xhn "a venue.lad" picture.png text.txt

failed=0
# offers LINE WANTED...: exactly these; the line's last word is being typed.
offers()
{
    local line=$1
    shift
    IFS=' ' read -ra COMP_WORDS <<<"$program ${line//=/ = }"
    [[ $line == *[\ =] ]] && COMP_WORDS+=("")
    [[ $line == *= ]] && unset 'COMP_WORDS[-1]'
    COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
    _orva_cli
    local IFS=$'\n'
    if [[ $(sort <<<"${COMPREPLY[*]}") != "$(sort <<<"$*")" ]]; then
        echo "'$line' offers '${COMPREPLY[*]}', not '$*'"
        failed=1
    fi
}

offers "le" levels
offers "s" show spectrum suggest subarray
offers "--v" --version
offers "levels --map" --map-type
offers "levels --map-type " detailed continuous peak
offers "levels --units=" m ft
offers "levels --language=d" de
offers "optimize --measure e" even
offers "spectrum --a" --at --area --averaging --a-weighted
offers "levels " venue.lad "a venue.lad" rooms
offers "levels --progress v" venue.lad
offers "levels --points "
offers "levels --speaker-data " measured.xhn rooms
offers "map --png p" picture.png
offers "map --data " rooms
exit $failed
