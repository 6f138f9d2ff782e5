' Sends the message that an action of a bill has in a scenario, as the runtime client does:
'   cscript /nologo send.vbs [action [scenario mask [bill ID]]]
Option Explicit

Const ClassTypeId = 1005
Dim action, scenario, billId
action = Argument(0, "MultiCheck")
scenario = CLng(Argument(1, 8))
billId = CLng(Argument(2, 5001))

Dim props, info
props = CreateObject("TavioSharedProps.PropStore").GetProperty(0, "PropsString")
Set info = CreateObject("TavioMClass.ClassInfo")

Dim actions, package
Set actions = CreateObject("TavioClassBillAction.BillActions")
actions.ClassTypeID = ClassTypeId
actions.Initialize
Set package = actions.GetMessage(action, scenario)
If package Is Nothing Then
  WScript.Echo "Action " & action & " has no message in scenario " & scenario & "."
  WScript.Quit 1
End If
WScript.Echo "The message of " & action & " in scenario " & scenario & ": " & package("FTitle")

Dim message, bill
Set message = CreateObject("TavioClassBillAction.Message")
message.ClassTypeID = ClassTypeId
Set message.ClassType = info.GetClassType(props, ClassTypeId)
Set message.TableInfo = info.GetTableInfo(props, ClassTypeId)
Set message.ClassTypeEntry = info.GetClassTypeEntry(props, ClassTypeId)
message.RefreshVariableList
message.SetMessage package
WScript.Echo "As the designer reads it: " & package("FMessageDescriptions")

Set bill = info.GetBillData(props, ClassTypeId, billId)
Set message.Data = bill   ' an empty Dictionary here sends to the recipients of the package alone
message.RefreshVariableValue bill
WScript.Echo "Variables of bill " & billId & ": " & message.GetVariableList.Count
WScript.Echo "As the recipients read it: " & message.TransMessage(package("FMessage"), False, True)

WScript.Echo "Recipients in the package: " & package("MessageUsers").Count & ", by fields of the bill: " & _
  message.GetVariableUser.Count
If message.SendMessage Then
  WScript.Echo "Sent."
Else
  WScript.Echo "Not sent."
  WScript.Quit 1
End If
WScript.Echo "Done."

Function Argument(index, fallback)
  Argument = fallback
  If WScript.Arguments.Count > index Then Argument = WScript.Arguments(index)
End Function
