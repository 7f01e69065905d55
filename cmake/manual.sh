#!/bin/sh
# The public headers as pages in FOLDER and as man pages in FOLDER/man/man3; fails on a warning of doxygen.
#
#     cmake/manual.sh FOLDER
#
# Of the man pages those stay that describe something, and the names of calls that lead to one of them:
# doxygen adds a name for every field and constant, some of a single letter.
set -eu
mkdir -p "$1"
folder=$(cd "$1" && pwd)
cd "$(dirname "$0")/.."

rm -rf "$folder"
{
    cat docs/Doxyfile
    echo "OUTPUT_DIRECTORY = \"$(dirname "$folder")\""
    echo "HTML_OUTPUT = \"$(basename "$folder")\""
    echo "MAN_OUTPUT = \"$(basename "$folder")/man\""
} | doxygen -

for page in "$folder"/man/man3/*.3; do
    case $(head -n 1 "$page") in
    .so*) grep -q "^ *$(basename "$page" .3);\$" cmake/exports.map || rm "$page" ;;
    *) sed -i "s/^'/\\\\\&'/" "$page" ;; # doxygen does not see that this would be a macro
    esac
done
