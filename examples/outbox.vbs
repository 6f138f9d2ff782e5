' Prints what the development platform's mail and SMS gateways were given:  cscript /nologo outbox.vbs [file]
' With a file's name the tables are written there, as Unicode text, instead of to the console.
Option Explicit

Dim output
Set output = Nothing
If WScript.Arguments.Count > 0 Then
  Set output = CreateObject("Scripting.FileSystemObject").CreateTextFile(WScript.Arguments(0), True, True)
End If

Dim store, process, name, properties, info
Set store = CreateObject("TavioSharedProps.PropStore")
process = 0
name = "PropsString"
properties = store.GetProperty(process, name)
Set info = CreateObject("TavioMClass.ClassInfo")

PrintAll "Mails", "SELECT FTime, FRecipients, FSubject, FBody, FAttachment, FFile FROM t_MailOutbox ORDER BY FID"
PrintAll "Short messages", "SELECT FTime, FRecipients, FContent, FBillType, FBillNo FROM t_SmsOutbox ORDER BY FID"
If Not output Is Nothing Then output.Close
WScript.Echo "Done."

' One field to a line, since addresses and texts are long.
Sub PrintAll(title, sql)
  Dim rows, i
  Set rows = info.GetData(properties, sql)
  Print title & ": " & rows.RecordCount
  Do Until rows.EOF
    For i = 0 To rows.Fields.Count - 1
      Print "  " & Left(rows.Fields(i).Name & Space(12), 13) & OneLine(rows.Fields(i).Value)
    Next
    Print ""
    rows.MoveNext
  Loop
End Sub

Sub Print(text)
  If output Is Nothing Then
    WScript.Echo text
  Else
    output.WriteLine text
  End If
End Sub

Function OneLine(value)
  OneLine = Replace(Replace(value & "", vbCr, " "), vbLf, " ")
End Function
