#!/usr/bin/env bash
# updates.sh FOLDER: runs the program in the bare root below FOLDER, with a feed and a key, and checks that it fetches
# the feed over TLS from a server outside, whose certificate that system trusts.
set -uo pipefail
folder=$1
base=$folder/base root=$folder/root
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
. "$here/bare_root.sh"
ceiling=${STACKREEL_CEILING:-120}
certificates=$here/../updates/tls
trusted=$root/usr/local/share/ca-certificates/test.crt
info=$root/usr/lib/stackreel/Info.json

finish() {
  # Kill the process that created the namespaces, a child of the background shell, which ends all processes in them.
  [ -z "${program:-}" ] || kill -KILL $(pgrep -P "$program") 2>/dev/null
  kill -TERM "$server" 2>/dev/null
  wait 2>/dev/null
}

coproc SERVER { exec python3 "$here/feed_server.py" "$certificates/loopback.pem" "$certificates/key.pem" 2>"$folder/server.log"; }
server=$SERVER_PID
exec 3<&"${SERVER[0]}"
trap finish EXIT
read -rt "$ceiling" port <&3 || { echo "the server does not start"; exit 1; }

cp "$certificates/loopback.pem" "$trusted"
in_root root update-ca-certificates >"$folder/certificates.log" 2>&1 || { cat "$folder/certificates.log"; exit 1; }
printf '{"SUFeedURL": "https://127.0.0.1:%s/stackreel.feed", "SUPublicEDKey": "%043d="}\n' "$port" 0 >"$info"
in_root user env QT_QPA_PLATFORM=offscreen stackreel >"$folder/updates.log" 2>&1 &
program=$!
read -rt "$ceiling" path <&3 || { echo "the program does not request the feed"; cat "$folder/updates.log"; exit 1; }
[ "$path" = /stackreel.feed ] || { echo "the program requests $path"; exit 1; }
