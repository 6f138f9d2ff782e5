' Binds a message to an action in a scenario, as the designer does:  cscript /nologo new_message.vbs
' Afterwards "send.vbs Close 64" sends it.
Option Explicit

Const ClassTypeId = 1005
Dim scenario
scenario = CLng(64)

Dim props, info
props = CreateObject("TavioSharedProps.PropStore").GetProperty(0, "PropsString")
Set info = CreateObject("TavioMClass.ClassInfo")

Dim message, package
Set message = CreateObject("TavioClassBillAction.Message")
message.ClassTypeID = ClassTypeId
Set message.ClassType = info.GetClassType(props, ClassTypeId)
Set message.TableInfo = info.GetTableInfo(props, ClassTypeId)
message.RefreshVariableList
message.NewMessage
Set package = message.GetMessage
package("FTitle") = "Closed"
package("FMessage") = "Bill [FBillNo] of [FDept] was closed."
message.AddUser 16395
message.AddUser 16399
If Not message.SetMessage(package) Then WScript.Quit 1
WScript.Echo "As the designer reads it: " & package("FMessageDescriptions")

' An entry names its scenario twice: in its key, and in FEnvironment.
Dim entry, actions, action, messages
Set entry = CreateObject("Vexo.Dictionary")
entry("FEnvironment") = scenario
Set entry("Message") = package

Set actions = CreateObject("TavioClassBillAction.BillActions")
actions.ClassTypeID = ClassTypeId
actions.Initialize
Set action = actions.Item("Close")
If action Is Nothing Then
  WScript.Echo "There is no action Close any more."
  WScript.Quit 1
End If
Set messages = action("Messages")
If messages Is Nothing Then Set messages = CreateObject("Vexo.Dictionary")
Set messages(CStr(scenario)) = entry
Set action("Messages") = messages
If Not actions.Update(action) Then WScript.Quit 1
If Not actions.Save Then WScript.Quit 1

Set package = actions.GetMessage("Close", scenario)
WScript.Echo "Saved: '" & package("FTitle") & "', to " & package("MessageUsers").Count & " users."
WScript.Echo "Done."
