' Prints what the last operations logged, as a tree with durations:  cscript /nologo trace.vbs [how many operations]
' The rows come from the development platform's log, those of the process that logged last.
Option Explicit

Dim wanted, props, info, entries
wanted = 1
If WScript.Arguments.Count > 0 Then wanted = CLng(WScript.Arguments(0))
props = CreateObject("TavioSharedProps.PropStore").GetProperty(0, "PropsString")
Set info = CreateObject("TavioMClass.ClassInfo")
Set entries = info.GetData(props, "SELECT FLabel, FBegin, FEnd, FOutcome FROM t_Log" & _
  " WHERE FProcessID = (SELECT FProcessID FROM t_Log ORDER BY FID DESC LIMIT 1) ORDER BY FID")

Dim count, i
count = entries.RecordCount
Dim labels, begins, ends, outcomes, levels
Set labels = CreateObject("Scripting.Dictionary")
Set begins = CreateObject("Scripting.Dictionary")
Set ends = CreateObject("Scripting.Dictionary")
Set outcomes = CreateObject("Scripting.Dictionary")
Set levels = CreateObject("Scripting.Dictionary")
For i = 0 To count - 1
  labels(i) = entries("FLabel").Value
  begins(i) = entries("FBegin").Value
  ends(i) = entries("FEnd").Value
  outcomes(i) = entries("FOutcome").Value
  entries.MoveNext
Next
PairBegins
PrintFrom FindLevels
WScript.Echo "Done."

' Some operations log their end as one more begin: it becomes the first one's end, and no entry of its own.
Sub PairBegins
  Dim i, j
  For i = 0 To count - 1
    For j = i + 1 To count - 1
      If Not IsNull(ends(i)) Or labels(i) = "" Then Exit For
      If IsNull(ends(j)) And labels(j) = labels(i) Then
        ends(i) = begins(j)
        labels(j) = ""
      End If
    Next
  Next
End Sub

' An entry stands inside those that had not ended when it began. Answers where the wanted operations begin.
Function FindLevels
  Dim i, open, top, tops
  top = 0
  Set open = CreateObject("Scripting.Dictionary")
  Set tops = CreateObject("Scripting.Dictionary")
  For i = 0 To count - 1
    If labels(i) <> "" Then
      Do While top > 0
        If Not IsNull(ends(open(top))) Then
          If ends(open(top)) > begins(i) Then Exit Do
        End If
        top = top - 1
      Loop
      levels(i) = top
      If top = 0 Then tops.Add tops.Count, i
      top = top + 1
      open(top) = i
    End If
  Next
  FindLevels = count
  If tops.Count > 0 Then FindLevels = tops(0)
  If tops.Count > wanted Then FindLevels = tops(tops.Count - wanted)
End Function

Sub PrintFrom(first)
  Dim i
  For i = first To count - 1
    If labels(i) <> "" Then WScript.Echo Duration(i) & "  " & Space(2 * levels(i)) & labels(i) & Outcome(i)
  Next
End Sub

Function Duration(i)
  Duration = "not ended"
  If Not IsNull(ends(i)) Then Duration = CStr(ends(i) - begins(i)) & " ms"
  If Len(Duration) < 9 Then Duration = Space(9 - Len(Duration)) & Duration
End Function

Function Outcome(i)
  If Not IsNull(outcomes(i)) Then Outcome = "  (outcome " & outcomes(i) & ")"
End Function
