#!/usr/bin/env bash
# Fails when a message of the programs begins no row of docs/guide/messages.md. A message is what a
# statement says that shows, throws or prints it: its string literals, a line at a time and without
# what is told at the time. Findings of the check stand on a page of their own.
set -euo pipefail
cd "$(dirname "$0")/.."

# What a statement of a message calls or names, and files whose functions return messages.
tellers='\b(?:MsgBox|Ask(?:Instead)?|Tell(?:News|Refusal|Failure|OnInterrupt|LinkStatus)|[Ff]ail\w*|[Rr]efuse\w*(?:\.\w+)?)\(
  |\b\w*(?:Failure|Error|Refusal)[({] | \bthrow\b | \bstderr\b | \brests\b'
returners='(?:src/line/(?:com_port|line_kinds|\w+_transport)\.cpp
  |src/link/(?:connect_transfer|download)\.cpp | src/document/rehearse\.cpp
  |src/shell/(?:controls/grid_selection|window/main_window_file)\.cpp
  |src/project/(?:places\.h|panel_at\.cpp|transfer_commands\.cpp))$'

find src simulator -name '*.cpp' -o -name '*.h' | grep -vE '/rules/check/check_|^simulator/engine/' | sort |
  TELLERS=$tellers RETURNERS=$returners xargs perl -0777 -ne '
    BEGIN {
      open my $page, "<", "docs/guide/messages.md" or die "docs/guide/messages.md: $!\n";
      local $/;
      $rows = join "\n", <$page> =~ /^\| (.*?) \| /mg;
      $literal = qr/"(?:[^"\\\n]|\\.)*"/;
      $character = qr/\x27(?:[^\x27\\\n]|\\.)\x27/;
    }
    s{($literal)|//[^\n]*}{$1 // ""}ge;
    my $line = 1;
    # A statement ends with a semicolon, or where a block begins or ends.
    while (/((?:$literal|$character|[^";{}]|[{}](?!\n))*+(?:[;{}]|\z))/g) {
      my ($statement, $at) = ($1, $line);
      $line += $statement =~ tr/\n//;
      next unless $statement =~ /$ENV{TELLERS}/x || $ARGV =~ /$ENV{RETURNERS}/x;
      $statement =~ s/,\s*MsgIcon::.*//s;  # the title
      while ($statement =~ /((?:$literal\s*)+)/g) {
        my $text = join "", map { s/^"|"$//gr } $1 =~ /$literal/g;
        for my $part (split /\\[nr]|%\d|%[-+]?\d*[dls]/, $text) {
          $part =~ s/\\"/"/g;
          $part =~ s/^[\s":;,.]+|[\s":;,(]+$//g;
          next if $part !~ /^[^&].*\w\s+\w/ || index($rows, $part) >= 0;
          print STDERR "$ARGV:$at: no row of docs/guide/messages.md tells \"$part\"\n";
          $missing = 1;
        }
      }
    }
    END { exit($missing // 0) }'
