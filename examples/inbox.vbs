' Prints the inbox of the user who works here, on the development platform:  cscript /nologo inbox.vbs [file]
' The environment variable TAVIO_DEV_USER makes it somebody else's: TAVIO_DEV_USER=16395 is another user's ID. With a file's
' name the table is written there, as Unicode text, instead of to the console.
Option Explicit

Dim output
Set output = Nothing
If WScript.Arguments.Count > 0 Then
  Set output = CreateObject("Scripting.FileSystemObject").CreateTextFile(WScript.Arguments(0), True, True)
End If

Dim store, info, inbox
Set store = CreateObject("TavioSharedProps.PropStore")
Set info = CreateObject("TavioMClass.ClassInfo")
Set inbox = info.GetData(store.GetProperty(0, "PropsString"), _
  "SELECT m.FTime, s.FName AS FSender, r.FName AS FRecipient, m.FTitle, m.FContent FROM t_Inbox m" & _
  " LEFT JOIN t_User s ON s.FUserID = m.FSenderID LEFT JOIN t_User r ON r.FUserID = m.FRecipientID" & _
  " WHERE m.FRecipientID = " & store.GetProperty(0, "UserID") & " ORDER BY m.FID")

Print Line("time", "sender", "recipient", "title", "content")
Print String(110, "-")
Do Until inbox.EOF
  Print Line(inbox("FTime"), inbox("FSender"), inbox("FRecipient"), inbox("FTitle"), OneLine(inbox("FContent")))
  inbox.MoveNext
Loop
Print inbox.RecordCount & " message(s)"
If Not output Is Nothing Then output.Close
WScript.Echo "Done."

Sub Print(text)
  If output Is Nothing Then
    WScript.Echo text
  Else
    output.WriteLine text
  End If
End Sub

Function Line(sent, sender, recipient, title, content)
  Line = Padded(Left(sent, 19), 20) & Padded(sender, 10) & Padded(recipient, 10) & Padded(title, 24) & content
End Function

Function OneLine(text)
  OneLine = Replace(Replace(text & "", vbCr, " "), vbLf, " ")
End Function

' A Chinese character takes two columns.
Function Padded(value, columns)
  Dim text, i, width
  text = value & ""
  For i = 1 To Len(text)
    width = width + 1
    If Asc(Mid(text, i, 1)) < 0 Or Asc(Mid(text, i, 1)) > 255 Then width = width + 1
  Next
  If width < columns Then text = text & Space(columns - width)
  Padded = text & " "
End Function
