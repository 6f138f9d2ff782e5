' What a test script is written with.
Option Explicit

Dim failures_, boxesRead_
failures_ = 0
boxesRead_ = 0

' One result, compared with what it must be; a number never equals a text.
Sub Check(name, actual, expected)
  If TypeName(actual) = TypeName(expected) And CStr(actual) = CStr(expected) Then
    WScript.Echo "ok " & name
  Else
    failures_ = failures_ + 1
    WScript.Echo "FAILED " & name & ": " & TypeName(actual) & " " & Plain(actual) & " instead of " & _
        TypeName(expected) & " " & Plain(expected)
  End If
End Sub

' Some hosts corrupt their memory when they print other characters than these to a pipe.
Function Plain(value)
  Dim i, unit
  Plain = ""
  For i = 1 To Len(CStr(value))
    unit = Mid(CStr(value), i, 1)
    If Asc(unit) < 0 Or Asc(unit) > 126 Then unit = "<" & Hex(Asc(unit)) & ">"
    Plain = Plain & unit
  Next
End Function

' The message boxes shown since the last call, one line each: [title] text (buttons).
Function Boxes()
  Dim files, lines, number
  Set files = CreateObject("Scripting.FileSystemObject")
  number = 0
  Boxes = ""
  If Not files.FileExists(WScript.Arguments.Item(0)) Then Exit Function
  Set lines = files.OpenTextFile(WScript.Arguments.Item(0))
  Do Until lines.AtEndOfStream
    Dim line
    line = lines.ReadLine
    number = number + 1
    If number > boxesRead_ Then
      If Boxes <> "" Then Boxes = Boxes & vbLf
      Boxes = Boxes & line
    End If
  Loop
  lines.Close
  boxesRead_ = number
End Function

' The button that boxes are answered with from now on.
Sub Answer(button)
  Dim files, file
  Set files = CreateObject("Scripting.FileSystemObject")
  Set file = files.CreateTextFile(WScript.Arguments.Item(1), True)
  file.WriteLine CStr(button)
  file.Close
End Sub

Sub Finish()
  Check "no further box", Boxes(), ""
  WScript.Echo "finished"
  WScript.Quit failures_
End Sub

