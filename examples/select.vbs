' Lets the user choose among the recipients before a message is sent:
'   cscript /nologo select.vbs [action [scenario mask [bill ID]]]
Option Explicit

Const ClassTypeId = 1005
Dim action, scenario, billId
action = Argument(0, "MultiCheck")
scenario = CLng(Argument(1, 8))
billId = CLng(Argument(2, 5001))

Dim props, info
props = CreateObject("TavioSharedProps.PropStore").GetProperty(0, "PropsString")
Set info = CreateObject("TavioMClass.ClassInfo")

Dim actions, message, bill
Set actions = CreateObject("TavioClassBillAction.BillActions")
actions.ClassTypeID = ClassTypeId
actions.Initialize
Set message = CreateObject("TavioClassBillAction.Message")
message.ClassTypeID = ClassTypeId
Set message.ClassType = info.GetClassType(props, ClassTypeId)
Set message.TableInfo = info.GetTableInfo(props, ClassTypeId)
message.RefreshVariableList
message.SetMessage actions.GetMessage(action, scenario)
Set bill = info.GetBillData(props, ClassTypeId, billId)
message.RefreshVariableValue bill

' Users named by fields of the bill are no matter of choice: they join those who were chosen, in the same list.
Dim sent, user
message.MustSelectMsgUser = True
sent = message.SendMessage
WScript.Echo "Recipients: " & message.SelectedUser.Count
For Each user In message.SelectedUser
  WScript.Echo "  " & user
Next
If sent Then
  WScript.Echo "Sent."
Else
  WScript.Echo "Not sent: no recipient is left."
End If
WScript.Echo "Done."

Function Argument(index, fallback)
  Argument = fallback
  If WScript.Arguments.Count > index Then Argument = WScript.Arguments(index)
End Function
