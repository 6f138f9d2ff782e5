# Lists the actions of a bill type, with the number of messages of each:
#   powershell -ExecutionPolicy Bypass -File list_actions.ps1 [class type ID]
# The Windows PowerShell below System32 loads the 64-bit library, the one below SysWOW64 the 32-bit one.
param([int]$ClassTypeId = 1005)
$ErrorActionPreference = 'Stop'

$actions = New-Object -ComObject TavioClassBillAction.BillActions
$actions.ClassTypeID = $ClassTypeId
$actions.Initialize()
$all = $actions.GetBillActions()
if ($null -eq $all) { throw "The actions of bill type $ClassTypeId could not be loaded." }

# Entries are read by GetValue, a plain method: this language has no default members to read them by.
for ($i = 1; $i -le $all.Count; $i++) {
  $code = $all.Name($i)
  $action = $actions.Item($code)
  $messages = $action.GetValue('Messages')
  $count = 0
  if ($null -ne $messages) { $count = $messages.Count }
  '{0}  {1}  {2}  scenarios {3}, messages {4}' -f $action.GetValue('FID'), $code, $action.GetValue('FName'),
    $action.GetValue('FEnvironment'), $count
}
'Done.'
