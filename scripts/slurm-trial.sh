#!/usr/bin/env bash
# Runs docs/cluster.md under a real Slurm, with GNU parallel:
#   scripts/slurm-trial.sh FOLDER [--write]
# FOLDER is where the programs were built; run it as root. Debian's packages of Slurm, MUNGE, MariaDB and GNU parallel are
# installed where they are missing, and stay. All else lives in a temporary folder: configuration, keys, sockets, database
# and logs of a cluster of one node with ports of its own, so that a Slurm or MariaDB of the machine is neither used nor
# disturbed. All commands of the page are run as they are printed (scripts/docs-numbers.sh --trial); what they print is
# compared, or brought up to date with --write, and their times are shown. However it ends, the daemons are stopped and
# the folder is removed; after a failure the ends of their logs are shown.
# Processes are tracked by /proc and not held to cores or memory (proctrack/linuxproc, task/none), since containers as a
# rule have no control groups to give away: what is not tried is that Slurm kills a job that takes too much memory.
set -euo pipefail
write=${2:-}
if [ $# -lt 1 ] || [ $# -gt 2 ] || [ "${write:---write}" != --write ] || [ ! -x "$1/quorvex" ]; then
  echo "usage: $0 FOLDER [--write], FOLDER being where quorvex was built" >&2
  exit 2
fi
programs=$(cd "$1" && pwd)
[ "$(id -u)" -eq 0 ] || { echo "$0 installs packages and starts daemons, so it has to be run as root." >&2; exit 2; }
cd "$(dirname "$0")/.."

packages=(slurmctld slurmd slurm-client slurmdbd slurm-wlm-mysql-plugin munge mariadb-server parallel jq)
missing=()
for package in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'install ok installed' || missing+=("$package")
done
if [ ${#missing[@]} -gt 0 ]; then
  echo "Installing from Debian, to stay when the trial is over: ${missing[*]}"
  export DEBIAN_FRONTEND=noninteractive
  apt-get update -qq
  apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
fi

folder=$(mktemp -d /tmp/slurm-trial.XXXXXX)
chmod 755 "$folder"  # munged wants its socket to be reachable
daemons=()           # process ids, the last one started first
page=                # the process group that runs the page
user=$(id -un)
take_down() {
  status=$?
  trap - EXIT
  trap '' INT TERM HUP
  if [ $status -ne 0 ]; then tail -n 10 "$folder"/*d.log >&2; fi
  [ -z "$page" ] || kill -- "-$page" 2>/dev/null || true
  # Steps that still run are children of slurmstepd, which slurmd leaves alone when it ends.
  if timeout 10 scancel --user="$user" 2>/dev/null; then
    for _ in $(seq 40); do [ -n "$(timeout 10 squeue --noheader 2>/dev/null)" ] || break; sleep 1; done
  fi
  for daemon in "${daemons[@]}"; do
    kill "$daemon" 2>/dev/null || continue
    for _ in $(seq 100); do kill -0 "$daemon" 2>/dev/null || break; sleep 0.1; done
    kill -9 "$daemon" 2>/dev/null || true
  done
  rm -rf "$folder"
  [ $status -eq 0 ] && echo "All was taken down." || echo "The trial failed with status $status; all was taken down." >&2
  exit $status
}
trap take_down EXIT
trap 'exit 130' INT
trap 'exit 143' TERM HUP

# start NAME COMMAND...: a daemon in the foreground of its own.
start() {
  "${@:2}" >>"$folder/$1.log" 2>&1 </dev/null &
  daemons=($! "${daemons[@]}")
}
# wait_for WHAT COMMAND...: until it succeeds.
wait_for() {
  for _ in $(seq 300); do timeout 5 "${@:2}" >/dev/null 2>&1 && return; sleep 0.1; done
  echo "$1 did not come up." >&2
  return 1
}
free_port() {
  local port
  while port=$((20000 + RANDOM % 12000)); (exec 3<>"/dev/tcp/127.0.0.1/$port") 2>/dev/null; do :; done
  echo "$port"
}
host=$(hostname -s)
password=$(od -An -N16 -tx1 /dev/urandom | tr -d ' \n')
export SLURM_CONF=$folder/slurm.conf

mkdir "$folder"/{state,spool,database}
(umask 077 && head -c 1024 /dev/urandom >"$folder/munge.key")
start munged /usr/sbin/munged --foreground --num-threads=10 --key-file="$folder/munge.key" --socket="$folder/munge.socket" \
  --pid-file="$folder/munged.pid" --log-file="$folder/munged.log" --seed-file="$folder/munged.seed"
wait_for munged munge --socket="$folder/munge.socket" --no-input

mariadb-install-db --no-defaults --user="$user" --datadir="$folder/database" --skip-test-db \
  --auth-root-authentication-method=normal >"$folder/mariadb-install.log" 2>&1
database_port=$(free_port)
start mariadbd /usr/sbin/mariadbd --no-defaults --user="$user" --datadir="$folder/database" \
  --socket="$folder/database.socket" --bind-address=127.0.0.1 --port="$database_port" \
  --pid-file="$folder/mariadbd.pid" --innodb-buffer-pool-size=64M --innodb-lock-wait-timeout=900
wait_for mariadbd mariadb-admin --no-defaults --socket="$folder/database.socket" --user=root ping
mariadb --no-defaults --socket="$folder/database.socket" --user=root -e "
  CREATE DATABASE accounting;
  CREATE USER slurm@'127.0.0.1' IDENTIFIED BY '$password';
  CREATE USER slurm@localhost IDENTIFIED BY '$password';
  GRANT ALL ON accounting.* TO slurm@'127.0.0.1';
  GRANT ALL ON accounting.* TO slurm@localhost;
  ALTER USER root@localhost IDENTIFIED BY '$password';"

accounting_port=$(free_port)
(umask 077 && cat >"$folder/slurmdbd.conf" <<END)
AuthType=auth/munge
AuthInfo=socket=$folder/munge.socket
DbdHost=$host
DbdAddr=127.0.0.1
DbdPort=$accounting_port
SlurmUser=$user
PidFile=$folder/slurmdbd.pid
StorageType=accounting_storage/mysql
StorageHost=127.0.0.1
StoragePort=$database_port
StorageUser=slurm
StoragePass=$password
StorageLoc=accounting
END
cat >"$SLURM_CONF" <<END
ClusterName=trial
SlurmctldHost=$host(127.0.0.1)
SlurmctldPort=$(free_port)
SlurmdPort=$(free_port)
SlurmUser=$user
SlurmdUser=$user
AuthType=auth/munge
AuthInfo=socket=$folder/munge.socket
CredType=cred/munge
StateSaveLocation=$folder/state
SlurmdSpoolDir=$folder/spool
SlurmctldPidFile=$folder/slurmctld.pid
SlurmdPidFile=$folder/slurmd.pid
ProctrackType=proctrack/linuxproc
TaskPlugin=task/none
SelectType=select/cons_tres
SelectTypeParameters=CR_CPU_Memory
SchedulerParameters=batch_sched_delay=1
JobAcctGatherType=jobacct_gather/linux
JobAcctGatherFrequency=task=1
AccountingStorageType=accounting_storage/slurmdbd
AccountingStorageHost=127.0.0.1
AccountingStoragePort=$accounting_port
AccountingStoragePass=$folder/munge.socket
MailProg=/bin/true
NodeName=$host NodeAddr=127.0.0.1 CPUs=$(nproc) RealMemory=$(awk '/^MemTotal/ { print int($2 / 2048) }' /proc/meminfo)
PartitionName=trial Nodes=$host Default=YES MaxTime=INFINITE State=UP
END
start slurmdbd /usr/sbin/slurmdbd -D
wait_for slurmdbd sacctmgr --immediate --noheader list cluster
sacctmgr --immediate --quiet add cluster trial >/dev/null
start slurmctld /usr/sbin/slurmctld -D
wait_for slurmctld scontrol ping
start slurmd /usr/sbin/slurmd -D -N "$host"
wait_for slurmd bash -c 'sinfo --noheader --format=%t | grep -q idle'

date '+%Y-%m-%d'
slurmctld -V
parallel --version | head -n 1
# In the background, since bash would wait for it before it answers a signal.
TMPDIR=$folder setsid scripts/docs-numbers.sh "$programs" $write --trial docs/cluster.md &
page=$!
wait "$page"
page=
echo "Largest MaxRSS: $(sacct --allusers --starttime=now-1hour --noheader --format=MaxRSS | sort -h | tail -n 1)"
