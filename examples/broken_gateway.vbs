' A host's own test: it breaks the mail gateway and asserts what its user saw:  cscript /nologo broken_gateway.vbs
' (RunHost stands for whatever the host does; here it sends the message of an approval by mail.)
Option Explicit
Dim recorder, boxes
Set recorder = CreateObject("TavioCompanion.Recorder")
Set boxes = CreateObject("TavioCompanion.Boxes")
recorder.Break "MorlaMobileOpen.MorlaSendMail", "MorlaSendMail", 1, "wrong type", "mailbox full"
recorder.Trace
boxes.Start
RunHost
boxes.Stop
recorder.Stop
If boxes.Shown.Count <> 1 Then Fail "the user saw " & boxes.Shown.Count & " boxes"
If (boxes.Shown.Item(1)("FStyle") And &HF0) <> vbExclamation Then Fail "it was no warning: " & boxes.Shown.Item(1)("FText")
WScript.Echo "The user was told once that the mail failed."
WScript.Echo "Done."

Sub RunHost
  Dim preview
  Set preview = CreateObject("TavioCompanion.Preview")
  preview.Compose(1005, "MultiCheck", 8, 5001).SendEmail Nothing
End Sub

Sub Fail(why)
  WScript.Echo "FAILED: " & why
  WScript.Quit 1
End Sub
