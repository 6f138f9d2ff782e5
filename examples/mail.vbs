' Sends the message that an action of a bill has in a scenario by mail, with the printed bill, and as a short message;
' then tells those who have to approve the bill:  cscript /nologo mail.vbs [action [scenario mask [bill ID]]]
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

Dim message, bill
Set message = CreateObject("TavioClassBillAction.Message")
message.ClassTypeID = ClassTypeId
Set message.ClassType = info.GetClassType(props, ClassTypeId)   ' its name is the attachment's
Set message.TableInfo = info.GetTableInfo(props, ClassTypeId)   ' the fields of the print
message.RefreshVariableList
message.SetMessage package
package("FAccessoryForEmail") = True
Set bill = info.GetBillData(props, ClassTypeId, billId)
message.RefreshVariableValue bill

Tell "The mail to " & package("EmailUsers").Count & " recipient(s)", message.SendEmail(bill)
Tell "The short message to " & package("SMSUsers").Count & " recipient(s)", message.SendShortMessage
Tell "The approval notice", message.SendSMS
WScript.Echo "Done."

Sub Tell(what, sent)
  If Not sent Then
    WScript.Echo what & " was not sent."
    WScript.Quit 1
  End If
  WScript.Echo what & " was sent."
End Sub

Function Argument(index, fallback)
  Argument = fallback
  If WScript.Arguments.Count > index Then Argument = WScript.Arguments(index)
End Function
