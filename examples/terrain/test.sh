#!/usr/bin/env bash
# Runs the example on its data, on a small grid whose picture is known, and on bad input.
# Usage: test.sh TERRAIN PIXEL DATA
set -euo pipefail

terrain=$(realpath "$1")
pixel=$(realpath "$2")
data=$(realpath "$3")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"

fail() {
    echo "test.sh: $*" >&2
    exit 1
}

# expect_line FILE TEXT: spaces in the file count as one.
expect_line() {
    tr -s ' ' <"$1" | grep -F -- "$2" >/dev/null || fail "no '$2' in: $(cat "$1")"
}

# expect_pixel FILE X Y "WIDTH HEIGHT RED GREEN BLUE"
expect_pixel() {
    local got
    got=$("$pixel" "$1" "$2" "$3")
    [[ $got == "$4" ]] || fail "$1 at $2, $3: got $got, want $4"
}

# expect_error TEXT ARGUMENT...: exit 1, TEXT in the one line on stderr, nothing new on the disk.
expect_error() {
    local text=$1 before status=0
    shift
    before=$(ls -A)
    "$terrain" "$@" >/dev/null 2>err.txt || status=$?
    [[ $status == 1 ]] || fail "$*: exit $status"
    [[ $(wc -l <err.txt) == 1 ]] || fail "$*: not one line: $(cat err.txt)"
    expect_line err.txt "$text"
    [[ $(ls -A) == "$before" ]] || fail "$*: left $(ls -A)"
}
touch err.txt bad.csv

# South: land from the shore up, real to the end. North: water, then land: the real call stops at once.
printf '%s\n' 'north\east,1,2,3' '10,0,10,2500' '11,-1,-2500,100' >small.csv
"$terrain" small.csv -o small.png --scale 2 --exaggeration 0 >out.txt
expect_line out.txt 'real to the end 1 rows'
expect_line out.txt 'stopped under water 1 rows'
expect_line out.txt '11.0000 2.0000 -2500 m 7.82405 + 3.14159i'
expect_pixel small.png 0 3 '6 4 38 66 30'
expect_pixel small.png 3 2 '6 4 38 66 30'
expect_pixel small.png 5 3 '6 4 250 246 232'
expect_pixel small.png 1 1 '6 4 190 224 240'
expect_pixel small.png 2 0 '6 4 10 30 88'

sed 's/$/\r/' small.csv >crlf.csv
"$terrain" crlf.csv -o crlf.png --scale 2 --exaggeration 0 >/dev/null
cmp small.png crlf.png

# A plain that falls to the east by 1 in 1: level ground keeps its colour, half a right angle of slope is
# all light or all shade.
printf '%s\n' 'north\east,0,0.01' '0,2500,1388.05' >slope.csv
"$terrain" slope.csv -o lit.png --scale 1 --exaggeration 1 --azimuth 90 >/dev/null
expect_pixel lit.png 0 0 '2 1 255 255 255'
"$terrain" slope.csv -o dark.png --scale 1 --exaggeration 1 --azimuth 270 >/dev/null
expect_pixel dark.png 0 0 '2 1 88 86 81'
"$terrain" slope.csv -o level.png --scale 1 --exaggeration 1 --altitude 90 >/dev/null
expect_pixel level.png 0 0 '2 1 203 200 188'

"$terrain" "$data" --exaggeration 0 >out.txt
expect_line out.txt 'Real logarithm of 91 rows of 120 heights'
expect_line out.txt 'stopped under water 91 rows'
expect_line out.txt 'at columns 0 to 9 65 rows'
expect_line out.txt 'at columns 30 to 39 16 rows'
expect_line out.txt '49.8339 237.0167 2205 m 7.69848 + 0.00000i'
expect_pixel terrain.png 0 727 '960 728 29 50 104'

while IFS='|' read -r content text; do
    printf '%b' "$content" >bad.csv
    expect_error "$text" bad.csv -o bad.png
done <<'TABLE'
|the file is empty
\n|line 1, column 1: no longitudes
x,1,2\n|no heights below the first row
x,1,2\n3,4\n|line 2, column 2: the row ends here
x,1,2\n3,4,5\n6,7,8,9\n|line 3, column 4: the row ends here
x,1,2\n3,4,5\n\n|line 3, column 1: not a number
x,1,2\n3,4,five\n|line 2, column 3: not a number
x,1,2\n3,4,5m\n|line 2, column 3: not a number
x,1,2\n3,,5\n|line 2, column 2: not a number
x,1,2\n3,nan,5\n|line 2, column 2: height outside
x,1,2\n3,1e999,5\n|line 2, column 2: height outside
x,1,2\n3,-32768,5\n|line 2, column 2: height outside
x,1,361\n3,4,5\n|line 1, column 3: longitude outside
x,1,2\n-91,4,5\n|line 2, column 1: latitude outside
x,2,1\n3,4,5\n|line 1, column 3: longitudes must grow
x,1,2\n3,4,5\n3,4,5\n|line 3, column 1: latitudes must grow
TABLE

expect_error 'missing.csv: cannot read' missing.csv
expect_error '.: cannot read' .
expect_error 'grid is required'
expect_error '--scale' small.csv --scale 0
expect_error '--scale' small.csv --scale many
expect_error '--azimuth' small.csv --azimuth north
expect_error '--altitude' small.csv --altitude 0
expect_error '--exaggeration' small.csv --exaggeration -1
expect_error '--colour' small.csv --colour
expect_error 'nowhere/a.png: cannot write' small.csv -o nowhere/a.png
expect_error '.: cannot write: not a regular file' small.csv -o .
expect_error '/dev/null: cannot write: not a regular file' small.csv -o /dev/null

# A write that fails half-way keeps the older picture.
cp terrain.png older.png
(
    trap '' XFSZ
    ulimit -f 1
    expect_error 'terrain.png: cannot write' "$data"
)
cmp terrain.png older.png
echo "terrain: all checks passed"
