Dim record, list, key, text, number

Set record = CreateObject("Vexo.Dictionary")
record("FCode") = "Save"
record("FName") = "保存"
record.Value("FStatus") = 2
Check "default member", record("FCode"), "Save"
Check "default member, Chinese", record("FName"), "保存"
Check "absent key", IsEmpty(record("FMask")), True
Check "fallback", record.GetValue("FMask", 0), 0
text = ""
For Each key In record
  text = text & key & ";"
Next
Check "For Each over a record", text, "FCode;FName;FStatus;"

Set list = CreateObject("Vexo.Vector")
list.Add record
list.Add record.Clone
list.Item(2).Value("FCode") = "Check"
text = ""
For Each key In list
  text = text & key("FCode") & ";"
Next
Check "For Each over a list", text, "Save;Check;"
Set record("Next") = list(2)
Check "package in a package", record("Next")("FCode"), "Check"

' Boxes of this host itself: the way in which tests see those of the library.
MsgBox "一行" & vbCrLf & "二行", 48, "标题"
Check "box", Boxes(), "[标题] 一行\n二行 (1)"
Answer vbNo
number = MsgBox("保存?", vbYesNo, "标题")
Check "answer", CLng(number), CLng(vbNo)
Check "box with two buttons", Boxes(), "[标题] 保存? (6 7)"
