#!/usr/bin/env bash
# Checks that the manual pages render without warnings of groff and mandoc, have the required sections and the version,
# and contain every action and option that the programs list: tests/manual/test.sh ZEPHCTL PROGRAM... Exits with status
# 77 if groff or mandoc is missing.
set -euo pipefail
pages=$(realpath "$(dirname "$0")/../../packaging/man")
zephctl=$1

for tool in groff mandoc; do
  if ! command -v "$tool" >/dev/null; then
    echo "SKIPPED: $tool is not installed"
    exit 77
  fi
done

status=0
# fault PAGE TEXT
fault() {
  printf '%s: %s\n' "$(basename "$1")" "$2"
  status=1
}

# text_of PAGE: its text, in lines so wide that nothing is broken.
text_of() { groff -man -ww -Tascii -P-cbou -rLL=1000n "$1" 2>&1; }

# check_page PAGE VERSION
check_page() {
  local page=$1 section=${1##*.} text warnings heading name
  warnings=$(groff -man -ww -Tutf8 "$page" 2>&1 >/dev/null; mandoc -Tlint -W warning "$page" 2>&1 || true)
  [[ -z $warnings ]] || fault "$page" "$warnings"
  text=$(text_of "$page")
  for heading in NAME SYNOPSIS DESCRIPTION ENVIRONMENT "SEE ALSO"; do
    grep -qx -- "$heading" <<<"$text" || fault "$page" "no section $heading"
  done
  if [[ $section == 1 ]]; then grep -qx "EXIT STATUS" <<<"$text" || fault "$page" "no section EXIT STATUS"; fi
  grep -q "^zephctl $2 " <<<"$text" || fault "$page" "not of version $2"
  # Pages of this project that are referred to.
  for name in $(sed -n '/^SEE ALSO$/,$p' <<<"$text" | grep -oE 'zeph[a-z-]+\([13]\)' | tr '(' . | tr -d ')'); do
    [[ -e $pages/$name ]] || fault "$page" "refers to $name, which does not exist"
  done
}

# check_contents PAGE: every line of standard input is in the page, not only in its synopsis; there is one at least.
check_contents() {
  local text line count=0
  text=$(text_of "$1" | sed -n '/^OPTIONS$/,$p')
  while IFS= read -r line; do
    count=$((count + 1))
    grep -qF -- "$line" <<<"$text" || fault "$1" "no \"$line\""
  done
  [[ $count -gt 0 ]] || fault "$1" "the program lists nothing"
}

version=$("$zephctl" help | sed -n '1s/^zephctl v\([0-9]*\.[0-9]*\.[0-9]*\)\..*/\1/p')
for page in "$pages"/*.[13]; do
  check_page "$page" "$version"
done
check_contents "$pages/zephctl.1" < <("$zephctl" help | sed -n 's/^   //p')
for program in "${@:2}"; do
  check_contents "$pages/$(basename "$program").1" < <("$program" --help | grep -oE -- '--[a-z-]+' | sort -u)
done
exit "$status"
