#!/usr/bin/env bash
# packages.sh SOURCE: tests how scripts/packages.sh installs packages, with fakes of apt and dpkg.
set -uo pipefail
source=$1
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
status=0

# Fake tools: INSTALLED and OFFERED are lists of package names; apt-get appends its arguments to the file `asked`.
tool() { printf '#!/bin/bash\n%s\n' "$2" >"$folder/$1" && chmod +x "$folder/$1"; }
# shellcheck disable=SC2016 # expanded by the tool
tool dpkg-query 'case " $INSTALLED " in *" ${!#} "*) echo -n installed ;; *) exit 1 ;; esac'
# apt-cache is German unless asked otherwise. A version table longer than a pipe holds follows, so that apt-cache dies if its
# reader ends early.
# shellcheck disable=SC2016
tool apt-cache 'candidate=Installationskandidat
[ "${LC_ALL:-}" != C ] || candidate=Candidate
case " $OFFERED " in *" $2 "*) echo "  $candidate: 1.0-1" ;; *) echo "  $candidate: (none)" ;; esac
printf "%100000s\n" table'
# shellcheck disable=SC2016
tool apt-get 'echo "$*" >>"'"$folder"'/asked"'
tool id 'echo 0'

expect() { # WHAT EXPECTED SEEN
  [ "$2" = "$3" ] && return
  printf 'FAILED %s\n  expected: %s\n  seen:     %s\n' "$1" "$2" "$3"
  status=1
}

require() { # INSTALLED OFFERED NAME…
  rm -f "$folder/asked"
  INSTALLED=$1 OFFERED=$2 PATH=$folder:/usr/bin:/bin bash -o pipefail -c \
    '. "$1/scripts/packages.sh"; shift; require_packages "$@"' bash "$source" "${@:3}" 2>/dev/null
}
# The names that apt-get was asked to install; empty if apt-get was not run.
installed() { sed -n 's/^install -y -qq --no-install-recommends //p' "$folder/asked" 2>/dev/null; }

require "one two" "" one two
expect "nothing is installed when all is there" "" "$(installed)"
[ ! -e "$folder/asked" ] || expect "apt-get is not started then" "" "$(cat "$folder/asked")"

require "one" "two three" one two
expect "what is missing is installed" "two" "$(installed)"

require "" "old" "new|old"
expect "the alternative that the system offers is taken" "old" "$(installed)"

require "" "new old" "new|old"
expect "the first alternative is preferred" "new" "$(installed)"

require "old" "new old" "new|old"
expect "an installed alternative is not enough where the system offers an earlier one" "new" "$(installed)"

require "old" "" "new|old"
expect "an installed alternative is enough where the system offers none before it" "" "$(installed)"

require "" "" "new|old"
expect "a name that is not offered reaches apt-get, which says so" "old" "$(installed)"

tool id 'echo 1000'
tool sudo 'exit 1'
said=$(INSTALLED="" OFFERED="two" PATH=$folder:/usr/bin:/bin bash -c \
  '. "$1/scripts/packages.sh"; require_packages "two|three" && echo installed' bash "$source" 2>&1 </dev/null)
expect "without root, the names are said" "Install them with: apt-get install --no-install-recommends two" "${said##*$'\n'}"
exit $status
