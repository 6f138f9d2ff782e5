' Writes a message with a variable of the host's own, fills it for one bill and for a group of bills, and sends it to
' users of the host's choice:  cscript /nologo variables.vbs [user ID]...
Option Explicit

Const ClassTypeId = 1005, BillId = 5001

Dim props, info, message
props = CreateObject("TavioSharedProps.PropStore").GetProperty(0, "PropsString")
Set info = CreateObject("TavioMClass.ClassInfo")
Set message = CreateObject("TavioClassBillAction.Message")
message.ClassTypeID = ClassTypeId
Set message.ClassType = info.GetClassType(props, ClassTypeId)
Set message.TableInfo = info.GetTableInfo(props, ClassTypeId)

' The variable joins those of the header fields. It keeps the value that it was given: no field has its name.
Dim due, package
Set due = CreateObject("Vexo.Dictionary")
due("FName") = "FDue"
due("FCaption") = "due date"
due("FValue") = "2024-03-05"
If Not message.AddVariable(due) Then WScript.Quit 1
message.NewMessage
Set package = message.GetMessage
package("FTitle") = "Due"
package("FMessage") = "Bill [FBillNo] is due on [FDue]."
If Not message.SetMessage(package) Then WScript.Quit 1
If Not message.RefreshVariableValue(info.GetBillData(props, ClassTypeId, BillId)) Then WScript.Quit 1
WScript.Echo "As the designer reads it: " & package("FMessageDescriptions")
WScript.Echo "For one bill: " & message.TransMessage(package("FMessage"), False, True)

' What an operation does to several bills at once is one message: with this code the group's values are the only ones.
Dim group
Set group = CreateObject("Vexo.Dictionary")
group("FCode") = "mnuEditUse"
group("FBillNo") = "CGSQ000001, CGSQ000002"
group("FDue") = "2024-03-08"
Set message.GroupInfo = group
WScript.Echo "For the group: " & message.TransMessage(package("FMessage"), False, True)

' The list that is given takes the place of the package's, and the empty bill data leave the fields' users out.
Dim chosen, i
Set chosen = CreateObject("Vexo.Dictionary")
If WScript.Arguments.Count = 0 Then
  Choose 16395
  Choose 16396
End If
For i = 0 To WScript.Arguments.Count - 1
  Choose CLng(WScript.Arguments(i))
Next
Set message.SelectedUser = chosen
Set message.Data = CreateObject("Vexo.Dictionary")
If Not message.SendMessage(message.SelectedUser) Then WScript.Quit 1
WScript.Echo "Sent to " & message.SelectedUser.Count & " chosen users."
WScript.Echo "Done."

Sub Choose(id)
  Dim entry
  Set entry = CreateObject("Vexo.Dictionary")
  entry("FUserID") = id
  entry("FMessageID") = package("FID")
  Set chosen(CStr(id)) = entry
End Sub
