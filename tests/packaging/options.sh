#!/usr/bin/env bash
# options.sh STACKREEL-CLI MAN-PAGE COMPLETIONS-FOLDER: checks that the help, the man page and the completions of all
# shells list the same options for each command. Runs the completions of bash and fish as the Tab key does.
set -uo pipefail
cli=$1
page=$2
completions=$3
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
export HOME=$scratch XDG_CONFIG_HOME=$scratch XDG_DATA_HOME=$scratch LC_ALL=C.UTF-8
status=0

long_options() { grep -oE -- '^--[a-z]+(-[a-z]+)*$' | sort -u; }

from_help() {
  # shellcheck disable=SC2086 # no command is no argument
  "$cli" $1 --help | sed -n '/^Options:/,/^$/p' | grep -oE '^  -[^ ]+' | tr -d ' ' | tr , '\n' | long_options
}

from_man_page() {
  local heading=${1:-OPTIONS}
  MANWIDTH=120 MANPAGER=cat man -l "$page" | col -bx |
    awk -v heading="$heading" '/^ ? ? ?[^ ]/ { within = $1 == heading } within' |
    grep -oE '^ {7}-[^ ,]+(, -[^ ,]+)*' | tr -d ' ' | tr , '\n' | long_options
}

from_bash() {
  bash --norc --noprofile -O extglob -c '
    . /usr/share/bash-completion/bash_completion
    . "$1/stackreel-cli.bash"
    shift
    COMP_WORDS=("$@") COMP_CWORD=$(($# - 1)) COMP_LINE=${LINE:-$*}
    COMP_POINT=${#COMP_LINE} COMPREPLY=()
    _stackreel_cli
    printf "%s\n" "${COMPREPLY[@]}"' bash "$completions" stackreel-cli "$@"
}

from_fish() {
  fish --no-config -c "source '$completions/stackreel-cli.fish'; complete -C 'stackreel-cli $*'" | cut -f 1
}

from_zsh() {
  local start='^_arguments -C' end='return$'
  [ $# -eq 0 ] || { start="^    $1)" end=';;'; }
  sed -n "/$start/,/$end/p" "$completions/_stackreel-cli" | grep -oE -- "['),]--[a-z-]+" | sed 's/^.//' | long_options
}

same() { # WHAT EXPECTED FOUND
  if [ -z "$2" ] || [ "$2" != "$3" ]; then
    printf '%s: expected\n%s\nfound\n%s\n' "$1" "$2" "$3"
    status=1
  fi
}

for command in '' probe export; do
  expected=$(from_help "$command")
  # shellcheck disable=SC2086
  {
    same "man page, ${command:-no command}" "$expected" "$(from_man_page $command)"
    same "bash, ${command:-no command}" "$expected" "$(from_bash $command -- | long_options)"
    same "fish, ${command:-no command}" "$expected" "$(from_fish $command -- | long_options)"
    same "zsh, ${command:-no command}" "$expected" "$(from_zsh $command)"
  }
done
aspects=$("$cli" export --help | grep -oE -- '--aspect [^ ]+' | cut -d ' ' -f 2 | tr '|' '\n' | sort)
same "bash, aspects" "$aspects" "$(from_bash export --aspect '' | sort)"
same "fish, aspects" "$aspects" "$(from_fish 'export --aspect ' | sort)"
same "bash, a started aspect" 16 "$(LINE='stackreel-cli export --aspect 9:' from_bash export --aspect 9 :)"
commands=$("$cli" --help | sed -n '/^Commands:/,/^$/p' | grep -oE '^  [a-z]+' | tr -d ' ' | sort)
same "bash, commands" "$commands" "$(from_bash '' | sort)"
same "fish, commands" "$commands" "$(from_fish '' | sort)"
zsh -n "$completions/_stackreel-cli" || status=1
exit $status
