#!/bin/sh
# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
# A compiler launcher that replaces the compiler, because CMake has one for all C++ sources of a project.
#
#     cmake/compile_by.sh 'COMPILER OPTION...' REPLACED ARGUMENT...
#
# Runs COMPILER OPTION... ARGUMENT...
compiler=$1
shift 2
# shellcheck disable=SC2086 # words
exec $compiler "$@"
