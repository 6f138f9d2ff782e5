' What a platform holds leaves it as text, comes back, and goes back to the seed.
Dim data, seed, changed, store, description
Set store = CreateObject("TavioSharedProps.PropStore")
Set data = CreateObject("TavioDevPlatform.Data")
seed = data.Export()

Dim actions
Set actions = CreateObject("TavioClassBillAction.BillActions")
actions.ClassTypeID = 1005
actions.Initialize
actions.Remove "Close"
Check "Save", actions.Save, True
store.SetProperty "Language", "ENU"
changed = data.Export()
Check "the export has it", InStr(changed, """FName"":""Language"",""FValue"":""ENU""") > 0, True
data.SetSetting "MailWay", "refuse"

data.Import changed
Check "what was exported is stored", data.Export() = changed, True
Check "its settings, too", data.Setting("MailWay"), "outbox"
On Error Resume Next
data.Import Replace(changed, "t_Emp""", "t_Emps""")
Check "refused", Err.Description, "未知的表 t_Emps"
Err.Clear
data.Import Replace(changed, """FItemID"":6", """FItemID"":5")
Check "refused by the database", InStr(Err.Description, "数据库错误") > 0, True
Err.Clear
data.Import Replace(changed, """FItemID"":6", """FItemID"":99999999999999999999")
Check "an integer that nothing holds", InStr(Err.Description, "溢出") > 0, True
Err.Clear
data.Reset "another"
Check "another database", InStr(Err.Description, "而不是 another") > 0, True
On Error GoTo 0
Check "nothing of that is stored", data.Export() = changed, True

Set description = data.Describe
data.Reset description("FDatabase")
Check "the seed", data.Export() = seed, True
actions.AddNew actions.Item("Save")
Check "what was loaded before is outdated", actions.Save, False
Check "its box", InStr(Boxes(), "已被其他用户修改") > 0, True
