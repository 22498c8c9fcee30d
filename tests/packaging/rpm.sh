#!/usr/bin/env bash
# rpm.sh FILE BUILD-FOLDER: checks that rpmspec can read FILE (stackreel.spec), that rpmlint finds no error in it, and that it
# lists exactly the installed files. Exits with 77 where rpmspec or rpmlint is missing.
set -uo pipefail
for program in rpmspec rpmlint; do
  command -v "$program" >/dev/null || { echo "$program is missing"; exit 77; }
done
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
status=0

rpmspec --parse "$1" >"$scratch/spec" || exit 1
rpmlint "$1" >"$scratch/rpmlint.log" 2>&1 || { cat "$scratch/rpmlint.log"; status=1; }
cmake --install "$2" --prefix "$scratch/root/usr" >"$scratch/install.log" || { tail "$scratch/install.log"; exit 1; }
cd "$scratch/root" || exit 1
# A listed folder contains all that is below it.
for pattern in $(sed -n '/^%files/,/^%changelog/s|^/|./|p' "$scratch/spec"); do
  # shellcheck disable=SC2086 # the shell expands the pattern
  find $pattern -type f >>"$scratch/listed" || { echo "nothing is installed as $pattern"; status=1; }
done
diff <(LC_ALL=C sort "$scratch/listed") <(find . -type f | LC_ALL=C sort) || status=1
exit $status
