# Sends the message that an action of a bill has in a scenario:
#   powershell -ExecutionPolicy Bypass -File send.ps1 [action [scenario mask [bill ID]]]
# The Windows PowerShell below System32 loads the 64-bit library, the one below SysWOW64 the 32-bit one.
param([string]$Action = 'MultiCheck', [int]$Scenario = 8, [int]$BillId = 5001)
$ErrorActionPreference = 'Stop'
$ClassTypeId = 1005

# The components of the development platform have no type information, without which this language finds no members by
# itself. Their calls stand here in full: a function would hand out a package entry by entry.
$com = [System.__ComObject]
$store = New-Object -ComObject TavioSharedProps.PropStore
$info = New-Object -ComObject TavioMClass.ClassInfo
$props = $com.InvokeMember('GetProperty', 'InvokeMethod', $null, $store, [object[]](0, 'PropsString'))
$template = $com.InvokeMember('GetClassType', 'InvokeMethod', $null, $info, [object[]]($props, $ClassTypeId))
$fields = $com.InvokeMember('GetTableInfo', 'InvokeMethod', $null, $info, [object[]]($props, $ClassTypeId))
$bill = $com.InvokeMember('GetBillData', 'InvokeMethod', $null, $info, [object[]]($props, $ClassTypeId, $BillId))

$actions = New-Object -ComObject TavioClassBillAction.BillActions
$actions.ClassTypeID = $ClassTypeId
$actions.Initialize()
$package = $actions.GetMessage($Action, $Scenario)
if ($null -eq $package) { throw "Action $Action has no message in scenario $Scenario." }

$message = New-Object -ComObject TavioClassBillAction.Message
$message.ClassTypeID = $ClassTypeId
$message.ClassType = $template
$message.TableInfo = $fields
$message.RefreshVariableList()
if (-not $message.SetMessage($package)) { throw 'The message was not taken.' }
if (-not $message.RefreshVariableValue([ref]$bill)) { throw 'The bill was not read.' }
if (-not $message.SendMessage()) { throw 'The message was not sent.' }
'Sent: {0}' -f $package.GetValue('FTitle')
'Done.'
