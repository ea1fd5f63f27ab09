#!/bin/sh
# The rules of the check, for the man page of the program that is given.
set -e
echo "[RULES]"
"$1" rules | awk -F '\t' 'NR > 1 { gsub(/-/, "\\-"); printf ".TP\n%s (%s)\n%s\n", $1, $2, $3 }'
echo
