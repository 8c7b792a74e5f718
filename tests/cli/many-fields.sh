# Sourced by the command-line checks: a task that a kill can cut in the middle of its writes.
# many_fields_task SCENARIO: .reg lines (no header) for task Many of SCENARIO, which gives
# piece i of @Text to variable Vi for i = 1..1000, then the Variables key with Text and every
# Vi set to "old".
many_fields_task() {
  printf '[HKEY_LOCAL_MACHINE\\SOFTWARE\\NOVRA\\Scenarios\\%s\\Taches\\Many]\r\n' "$1"
  printf '"Fonction"=dword:00000001\r\n"Chaine"="@Text"\r\n"Separateur"=";"\r\n"Fields.Count"=dword:000003e8\r\n'
  for i in $(seq 1 1000); do
    printf '"Fields(%d).Var"="@V%d"\r\n"Fields(%d).Start"="%d"\r\n"Fields(%d).End"="%d"\r\n"Fields(%d).ShowSep"="False"\r\n' \
      "$i" "$i" "$i" $((i - 1)) "$i" "$i" "$i"
  done
  printf '\r\n[HKEY_LOCAL_MACHINE\\SOFTWARE\\NOVRA\\Scenarios\\%s\\Variables]\r\n' "$1"
  printf '"Text"="%s"\r\n' "$(seq -s ';' 1 1000)"
  for i in $(seq 1 1000); do printf '"V%d"="old"\r\n' "$i"; done
}
# variables_whole EXPORT: true when V1, V500 and V1000 in an export of the Variables key are
# each "old" or their new piece, never anything else.
variables_whole() {
  local i value
  for i in 1 500 1000; do
    value=$(grep -a "^\"V$i\"=" "$1" | tr -d '\r')
    [ "$value" == "\"V$i\"=\"old\"" ] || [ "$value" == "\"V$i\"=\"$i\"" ] || return 1
  done
}
