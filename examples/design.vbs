' Changes an action of a bill type and saves it:  cscript /nologo design.vbs [class type ID]
Option Explicit

Dim classTypeId
classTypeId = 1005
If WScript.Arguments.Count > 0 Then classTypeId = CLng(WScript.Arguments(0))

Dim props, info
props = CreateObject("TavioSharedProps.PropStore").GetProperty(0, "PropsString")
Set info = CreateObject("TavioMClass.ClassInfo")

Dim actions
Set actions = CreateObject("TavioClassBillAction.BillActions")
Set actions.ClassType = info.GetClassType(props, classTypeId)
actions.Initialize
WScript.Echo "Loaded " & actions.GetBillActions.Count & " actions of bill type " & actions.ClassTypeID & ":"
PrintActions

Dim code, changed
code = actions.GetBillActions.Name(1)
Set changed = actions.Item(code)
changed("FName") = NextName(changed("FName"))
If Not actions.AddNew(changed) Then WScript.Quit 1
WScript.Echo "Renamed " & code & " to " & changed("FName") & "; its status is now " & actions.Item(code)("FStatus") & "."

If Not actions.Save Then WScript.Quit 1
WScript.Echo "Saved, and loaded again:"
PrintActions
WScript.Echo "Done."

Sub PrintActions
  Dim key, action, messages
  For Each key In actions.GetBillActions
    Set action = actions.Item(key)
    messages = 0
    If Not action("Messages") Is Nothing Then messages = action("Messages").Count
    WScript.Echo "  " & action("FID") & "  " & key & "  " & action("FName") & "  status " & action("FStatus") & _
      ", scenarios " & action("FEnvironment") & ", rights mask " & action("FRightMask") & ", messages " & messages
  Next
End Sub

' "Save", "Save (2)", "Save (3)" and so on, so that every run changes something.
Function NextName(name)
  Dim open
  open = InStrRev(name, " (")
  If open = 0 Then
    NextName = name & " (2)"
  Else
    NextName = Left(name, open + 1) & (CLng(Mid(name, open + 2, Len(name) - open - 2)) + 1) & ")"
  End If
End Function
