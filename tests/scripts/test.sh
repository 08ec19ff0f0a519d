#!/usr/bin/env bash
# What need_packages of scripts/packages.sh finds, names and installs. The machine is a directory of links, which is all
# of PATH; apt-get, id and sudo in it are ours.
set -euo pipefail
packages=$(realpath "$(dirname "$0")/../../scripts/packages.sh")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
bin=$work/bin
status=0

# machine UID: a user, and apt-get, whose installations create the program "tool" if $work/repairs exists.
machine() {
  local name
  rm -rf "$bin" "$work/calls" "$work/repairs"
  mkdir "$bin"
  for name in bash c++ cat cut env grep ln sed sort tr; do ln -s "$(command -v "$name")" "$bin/$name"; done
  printf '#!/bin/sh\necho %s\n' "$1" >"$bin/id"
  printf '#!/bin/sh\nprintf "sudo " >>"%s/calls"\nexec "$@"\n' "$work" >"$bin/sudo"
  cat >"$bin/apt-get" <<END
#!/bin/sh
echo "\$*" >>"$work/calls"
case "\$*" in *install*) [ ! -e "$work/repairs" ] || ln -s /bin/sh "$bin/tool" ;; esac
END
  chmod +x "$bin/id" "$bin/sudo" "$bin/apt-get"
}

# run COMMAND... runs a function of packages.sh on the machine, with a table of our own; output and status in $output.
# shellcheck disable=SC2016
run() {
  output=$(env -u CPATH PATH="$bin" ZEPHCTL_INSTALL="$install" bash -c '. "$0"; tools=$1; shift; "$@"' "$packages" "
    probes        command  cat                     cat-package
    probes        command  none|grep               grep-package
    probes        command  no-tool|no-other        no-package another
    probes,other  header   stdio.h                 libc-dev
    probes        header   none.h|stdio.h          libc-dev
    probes        header   no/such.h|none.h        libno-dev
    probes        python   json                    python3-json
    probes        python   no_such_module          python3-none
    one           command  tool                    tool-package
  " "$@" 2>&1) && output+="|0" || output+="|$?"
}

# expect TITLE WANTED ACTUAL
expect() {
  if [[ $2 != "$3" ]]; then
    printf '%s:\n%s\nand not\n%s\n' "$1" "$3" "$2"
    status=1
  fi
}

calls() { cat "$work/calls" 2>/dev/null || true; }
install=
message="These tools were not found:
  tool (Debian: tool-package)
Install them, or set ZEPHCTL_INSTALL=1 to have this done by apt."
apt_calls="-q -y update
-q -y install --no-install-recommends tool-package"

machine 1000
run missing_tools probes
expect "What is missing" "no-tool|no-other no-package another
no/such.h|none.h libno-dev
no_such_module python3-none|0" "$output"
run need_packages other
expect "Nothing is missing" "|0" "$output"
rm "$bin/c++"
run missing_tools other
expect "Headers without a compiler" "stdio.h libc-dev|0" "$output"

# Whether anything is installed, by user, by ZEPHCTL_INSTALL, and by what apt does.
machine 1000
run need_packages one
expect "A user who does not ask" "$message|1" "$output"
expect "A user who does not ask, apt" "" "$(calls)"

install=1
machine 1000
touch "$work/repairs"
run need_packages one
expect "A user who asks" "Installing the Debian packages tool-package|0" "$output"
expect "A user who asks, apt" "sudo ${apt_calls/$'\n'/$'\n'sudo }" "$(calls)"

install=
machine 0
touch "$work/repairs"
run need_packages one
expect "root" "Installing the Debian packages tool-package|0" "$output"
expect "root, apt" "$apt_calls" "$(calls)"

machine 0
run need_packages one
expect "An installation that does not help" "Installing the Debian packages tool-package
$message|1" "$output"

machine 0
rm "$bin/apt-get"
run need_packages one
expect "No apt" "$message|1" "$output"

install=0
machine 0
run need_packages one
expect "root who forbids it" "$message|1" "$output"
expect "root who forbids it, apt" "" "$(calls)"
exit "$status"
