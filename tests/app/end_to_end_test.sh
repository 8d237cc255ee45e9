#!/usr/bin/env bash
# The built program, run as a user runs it, against a service database of its own.
#   end_to_end_test.sh PROGRAM
set -euo pipefail
program=$1
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
export SVCINST_DATABASE=$folder/services.db

# expect STATUS PATTERN COMMAND...: PATTERN is that of the shell, for all of the output.
expect() {
  local status=$1 pattern=$2 told code=0
  shift 2
  told=$("$@" 2>&1) || code=$?
  # shellcheck disable=SC2053
  [ "$code" = "$status" ] && [[ $told = $pattern ]] ||
    { echo "$*: status $code, output: $told"; exit 1; }
}

expect 255 '*  --desc                        service description.' "$program"
[ ! -e "$SVCINST_DATABASE" ]
expect 0 '' "$program" --install --name hello --disname 'Hello you' --binpath 'C:\hello\hello.exe' \
  --dep Tcpip --desc 'says hello'
expect 0 'hello|Hello you|C:\\hello\\hello.exe|54637069700000|says hello' sqlite3 "$SVCINST_DATABASE" \
  'select name, display_name, binary_path, hex(dependencies), description from services'
expect 255 "*|*info*] Open the service 'HELLO' failed!" "$program" -i -n HELLO -d Other -b 'C:\x'
expect 0 "*] The service 'hello' is stoped!" "$program" --uninstall --name hello
expect 0 0 sqlite3 "$SVCINST_DATABASE" 'select count(*) from services'
