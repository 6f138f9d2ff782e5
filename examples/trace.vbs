' Prints what the last operations logged, as a tree with durations:  cscript /nologo trace.vbs [how many operations]
' The rows come from the development platform's log, those of the process that logged last.
Option Explicit

Class Entry
  Public Label
  Public Begun
  Public Ended
  Public Outcome
  Public Parent
  Public Level
End Class

Dim props, info, rows, wanted
props = CreateObject("TavioSharedProps.PropStore").GetProperty(0, "PropsString")
Set info = CreateObject("TavioMClass.ClassInfo")
Set rows = info.GetData(props, "SELECT FLabel, FBegin, FEnd, FOutcome FROM t_Log WHERE FProcessID =" & _
  " (SELECT FProcessID FROM t_Log WHERE FID = (SELECT MAX(FID) FROM t_Log)) ORDER BY FID")
wanted = 1
If WScript.Arguments.Count > 0 Then wanted = CLng(WScript.Arguments(0))

' An entry stands inside the innermost one that had not ended when it began. Some operations log their end as one more
' begin: it is no entry of its own.
Dim entries, innermost, one, tops
Set entries = CreateObject("Scripting.Dictionary")
Set innermost = New Entry
innermost.Ended = Null
Do Until rows.EOF
  Do While innermost.Ended <= rows("FBegin").Value
    Set innermost = innermost.Parent
  Loop
  If IsNull(rows("FEnd").Value) And IsNull(innermost.Ended) And innermost.Label = rows("FLabel").Value Then
    innermost.Ended = rows("FBegin").Value
  Else
    AddEntry
  End If
  rows.MoveNext
Loop

' The last operations are those outside all others, with everything inside them.
For Each one In entries.Items
  If one.Level = 1 Then tops = tops - 1
  If tops < wanted Then WScript.Echo Duration(one) & Space(2 * one.Level) & one.Label & Result(one)
Next
WScript.Echo "Done."

Sub AddEntry
  Set one = New Entry
  one.Label = rows("FLabel").Value
  one.Begun = rows("FBegin").Value
  one.Ended = rows("FEnd").Value
  one.Outcome = rows("FOutcome").Value
  one.Level = innermost.Level + 1
  Set one.Parent = innermost
  Set innermost = one
  If one.Level = 1 Then tops = tops + 1
  entries.Add entries.Count, one
End Sub

Function Duration(one)
  Duration = "not ended"
  If Not IsNull(one.Ended) Then Duration = FormatNumber((one.Ended - one.Begun) / 1000, 2) & " ms"
  If Len(Duration) < 12 Then Duration = Space(12 - Len(Duration)) & Duration
End Function

Function Result(one)
  If Not IsNull(one.Outcome) Then Result = "  (outcome " & one.Outcome & ")"
End Function
