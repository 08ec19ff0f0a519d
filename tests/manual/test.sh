#!/usr/bin/env bash
# Checks that the manual page renders without warnings and contains every line of the program's general usage.
# tests/manual/test.sh ZEPHCTL; exits with status 77 if groff is missing.
set -euo pipefail
page=$(dirname "$0")/../../packaging/man/zephctl.1

if ! command -v groff >/dev/null; then
  echo "SKIPPED: groff is not installed"
  exit 77
fi

# Wide enough to avoid line breaks.
wide=$(groff -man -ww -Tascii -P-cbou -rLL=1000n "$page" 2>&1)
narrow=$(groff -man -ww -Tutf8 "$page" 2>&1 >/dev/null)
status=0
if [[ -n $narrow ]] || grep -n "^troff: \|^grotty: \|warning: " <<<"$wide"; then
  printf '%s\n' "The page does not render cleanly:" "$narrow"
  status=1
fi

count=0
while read -r line; do
  count=$((count + 1))
  grep -qF -- "$line" <<<"$wide" || { echo "Lacking: $line"; status=1; }
done < <("$1" help | sed -n 's/^   //p')
if [[ $count -eq 0 ]]; then
  echo "The program lists no actions"
  status=1
fi
exit "$status"
