#!/usr/bin/env bash
# slurm.sh README FOLDER-OF-STACKREEL-CLI: runs the lines for Slurm in the README on a cluster of its own: one node, this one,
# reached over loopback only. Also cancels a job and requeues another. Exits with 77 where Slurm is missing
# or does not start.
set -uo pipefail
one=$(grep -E '^ {4}sbatch --cpus' "$1") || { echo "the README has no line for Slurm"; exit 1; }
array=$(sed -n '/^    ls -d /,/^$/p' "$1")
[ -n "$array" ] || { echo "the README has no job array"; exit 1; }
export PATH="$2:/usr/sbin:$PATH"
for program in slurmctld slurmd sbatch; do
  command -v "$program" >/dev/null || { echo "$program is missing"; exit 77; }
done
scratch=$(mktemp -d)
daemons=()
finish() {
  [ ${#daemons[@]} -eq 0 ] || { kill "${daemons[@]}"; wait "${daemons[@]}"; } 2>/dev/null
  rm -rf "$scratch"
}
trap finish EXIT
export SLURM_CONF=$scratch/slurm.conf
cd "$scratch" || exit 1
mkdir clips state spool

fail() { echo "$1"; tail -n 20 "$scratch"/*.log; exit 1; }
clip() { ffmpeg -v error -f lavfi -i testsrc2=r=10:s=320x180:d="$2" -c:v libx264 -preset ultrafast "clips/$1"; }
until_true() { for _ in $(seq 300); do eval "$1" && return; sleep 0.1; done; fail "did not happen: $1"; }
free_port() { python3 -c 'import socket; s = socket.socket(); s.bind(("127.0.0.1", 0)); print(s.getsockname()[1])'; }

start_cluster() {
  local host user
  host=$(hostname -s)
  user=$(id -un)
  cat >"$SLURM_CONF" <<END
ClusterName=test
SlurmctldHost=$host(127.0.0.1)
SlurmctldPort=$(free_port)
SlurmdPort=$(free_port)
SlurmUser=$user
SlurmdUser=$user
AuthType=auth/none
CredType=cred/none
ProctrackType=proctrack/linuxproc
StateSaveLocation=$scratch/state
SlurmdSpoolDir=$scratch/spool
SlurmctldPidFile=$scratch/slurmctld.pid
SlurmdPidFile=$scratch/slurmd.pid
SlurmdParameters=config_overrides
KillWait=5
NodeName=$host NodeAddr=127.0.0.1 CPUs=4
PartitionName=test Nodes=$host Default=YES State=UP
END
  slurmctld -D >slurmctld.log 2>&1 &
  daemons+=($!)
  slurmd -D >slurmd.log 2>&1 &
  daemons+=($!)
  for _ in $(seq 300); do
    [ "$(sinfo -h -o %t 2>/dev/null)" != idle ] || return
    sleep 0.1
  done
  tail -n 20 ./*.log
  echo "Slurm does not start here"
  exit 77
}

hidden() { compgen -G 'clips/.stackreel-*' >/dev/null; }

start_cluster
clip holiday.mov 0.5 && clip second.mov 0.5 && clip 'third é.mov' 0.5 || fail "ffmpeg made no clip"

SBATCH_WAIT=1 bash -c "$one" || fail "one clip: the job failed"
[ -s clips/holiday-vertical.mp4 ] || fail "one clip: nothing was exported"
rm clips/holiday-vertical.mp4

SBATCH_WAIT=1 bash -c "$array" || fail "the array failed"
[ "$(find clips -name '*-vertical.mp4' -size +0 | wc -l)" -eq 3 ] || fail "the array did not export all: $(ls clips)"
rm clips/*-vertical.mp4

clip long.mov 120 || fail "ffmpeg made no clip"
submit() { sbatch --parsable --requeue --wrap "srun stackreel-cli export --quiet -- clips/long.mov"; }
job=$(submit)
until_true hidden
scancel "$job"
until_true '[ -z "$(squeue -h)" ]'
until_true '! hidden'
[ ! -e clips/long-vertical.mp4 ] || fail "the cancelled job left a video"

rm clips/long.mov
clip long.mov 20 || fail "ffmpeg made no clip"
job=$(submit)
until_true hidden
scontrol requeue "$job" || fail "the job was not requeued"
until_true '[ "$(squeue -h -o %t)" = PD ]'
# Slurm would start it again two minutes later.
scontrol update JobId="$job" StartTime=now || fail "the requeued job was not started again"
for _ in $(seq 600); do [ -n "$(squeue -h)" ] || break; sleep 0.1; done
[ -s clips/long-vertical.mp4 ] || fail "the requeued job exported nothing"
! hidden || fail "the requeued job left a hidden file"
