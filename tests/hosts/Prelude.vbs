' What a test script is written with.
Option Explicit

Dim user_, failures_
Set user_ = CreateObject("TavioTest.User" & WScript.Arguments(0))
failures_ = 0

' One result, compared with what it must be; a number never equals a text.
Sub Check(name, actual, expected)
  If TypeName(actual) = TypeName(expected) And CStr(actual) = CStr(expected) Then
    WScript.Echo "ok " & name
  Else
    failures_ = failures_ + 1
    WScript.Echo "FAILED " & name & ": " & TypeName(actual) & " " & actual & " instead of " & TypeName(expected) & _
        " " & expected
  End If
End Sub

' The message boxes shown since the last call, one line each: [title] text (buttons).
Function Boxes()
  Boxes = user_.TakeBoxes
End Function

' The button that boxes are answered with from now on, if they have it.
Sub Answer(button)
  user_.Answer button
End Sub

Sub Finish()
  Check "no further box", Boxes(), ""
  user_.Finish failures_
End Sub

