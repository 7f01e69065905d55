#!/bin/sh
# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
# Makes HTML pages in FOLDER and man pages in FOLDER/man/man3 from the headers; fails on doxygen warnings.
#
#     cmake/manual.sh FOLDER
set -eu
mkdir -p "$1"
folder=$(cd "$1" && pwd)
cd "$(dirname "$0")/.."

rm -rf "$folder"
{
    cat docs/Doxyfile
    echo "OUTPUT_DIRECTORY = \"$(dirname "$folder")\""
    echo "HTML_OUTPUT = \"$(basename "$folder")\""
} | doxygen -

python3 -B cmake/man_pages.py "$folder/man/man3"
