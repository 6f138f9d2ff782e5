Dim props, info, actions, message
props = CreateObject("TavioSharedProps.PropStore").GetProperty(0, "PropsString")
Set info = CreateObject("TavioMClass.ClassInfo")
Set actions = CreateObject("TavioClassBillAction.BillActions")
actions.ClassTypeID = 1005
actions.Initialize
actions.GetMessage "Save", 3
Set message = CreateObject("TavioClassBillAction.Message")
message.ClassTypeID = 1005
Set message.ClassType = info.GetClassType(props, 1005)
Set message.TableInfo = info.GetTableInfo(props, 1005)
message.RefreshVariableValue info.GetBillData(props, 1005, 5001)

' The example prints into a file here, since labels are Chinese.
Dim shell, files, copy, output, text
Set shell = CreateObject("WScript.Shell")
Set files = CreateObject("Scripting.FileSystemObject")
copy = Replace(WScript.ScriptFullName, "Trace", "TraceCopy")
output = copy & ".txt"
text = files.OpenTextFile(shell.ExpandEnvironmentStrings("%TAVIO_TEST_FOLDER%\..\..\examples\trace.vbs")).ReadAll
With files.CreateTextFile(copy, True)
  .WriteLine Replace(Replace(text, "WScript.Echo ", "Print "), "Option Explicit", "Dim printed")
  .WriteLine "Sub Print(line)" & vbCrLf & "If IsEmpty(printed) Then Set printed = " & _
      "CreateObject(""Scripting.FileSystemObject"").CreateTextFile(""" & output & """, True, True)"
  .WriteLine "printed.WriteLine line" & vbCrLf & "End Sub"
  .Close
End With
Check "the example", shell.Run("cscript //nologo """ & copy & """ 2", 0, True), CLng(0)
text = ""
With files.OpenTextFile(output, 1, False, -1)
  Do Until .AtEndOfStream
    text = text & Mid(.ReadLine, 13) & vbLf
  Loop
  .Close
End With
Check "the last two operations", text, "  TavioClassBillAction.BillActions.GetMessage" & vbLf & _
    "  TavioClassBillAction.Message.RefreshVariableValue 刷新消息可用变元内容  (outcome 1)" & vbLf & _
    "    TavioClassBillAction.Message.RefreshVariableList 刷新消息变元列表  (outcome 1)" & vbLf & vbLf
