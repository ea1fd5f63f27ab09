#!/usr/bin/env bash
# The man page of a program with options, from its --help: page.sh DATE PROGRAM INCLUDE...
# It gets the date that is given, and lines of at most 80 characters.
set -euo pipefail
export date=$1
program=$2
shift 2
LC_ALL=C.UTF-8 help2man --no-info "${@/#/--include=}" "./$program" | perl -pe '
  s/"\w+ \d+"/"$ENV{date}"/ if /^\.TH/;
  s/(.{1,79})(?: |\n)/$1\n/g if /^[^.].{80}/'
