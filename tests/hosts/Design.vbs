Dim actions
Set actions = CreateObject("TavioClassBillAction.BillActions")
actions.Initialize
Check "failure box without a business object", Boxes(), _
    "[Morla提示] TavioClassBillAction.BillActions : Initialize\n请先设置本组件关联的业务对象! (1)"
actions.ClassTypeID = 1005
actions.Initialize
Check "loaded", Codes(actions.GetBillActions), "Save:0;MultiCheck:0;Close:0;"
Check "in a scenario", Codes(actions.GetEnvironmentItems(66)), "Save:0;Close:0;"
Dim added
Set added = CreateObject("Vexo.Dictionary")
added("FObjectID") = 1005
added("FObjectType") = 4
added("FName") = "归档"
added("FCode") = "Archive"
Check "AddNew", actions.AddNew(added), True
Dim renamed
Set renamed = actions.Item("Save")
renamed("FCode_Old") = "Save"
renamed("FCode") = "Store"
Check "another code", actions.AddNew(renamed), True
Check "its place, status", Codes(actions.GetBillActions), "MultiCheck:0;Close:0;Archive:1;Store:2;"
Check "its message", actions.GetMessage("Store", 1)("FTitle"), "采购申请已提交"

' The masks of a save: the catalogue's for predefined actions, the first that is free in t_ObjectAccessType for others.
Check "Save", actions.Save, True
Check "saved, and loaded again", Codes(actions.GetBillActions), "MultiCheck:0;Close:0;Archive:0;Store:0;"
Check "the renamed one keeps its own", actions.Item("Store")("FID"), CLng(1001)
Check "mask of the catalogue", actions.Item("MultiCheck")("FRightMask"), CLng(8)
Check "searched mask", actions.Item("Archive")("FRightMask"), CLng(512)
Check "and the others with it", actions.Item("Archive")("FRightUseMask") + actions.Item("Archive")("FRightGroupMask"), CLng(1024)

' Removing: a question before the last live one, in two kinds. A script's constant and a variable both pass.
Dim code, question
question = "[Morla提示] 如果删除全部操作，系统会重新加载预定义操作给单据，仍然确定要删除吗? (6 7)"
code = "Archive"
Check "Remove", actions.Remove(code) And actions.Remove("Store") And actions.Remove("Close"), True
Answer vbNo
Check "Remove of the last one, No", actions.Remove("MultiCheck"), False
Check "question", Boxes(), question
Check "it lives", actions.Item("MultiCheck")("FStatus"), CLng(0)
Answer vbYes
Check "Remove of the last one, Yes", actions.Remove("MultiCheck"), True
Check "question", Boxes(), question
Check "all deleted", Codes(actions.GetBillActions), "MultiCheck:4;Close:4;Archive:4;Store:4;"
Check "brought back", actions.AddNew(actions.Item("Close")), True
actions.RemoveAll
Check "question of RemoveAll", Boxes(), question
Check "Yes", actions.Item("Close")("FStatus"), CLng(6)
Check "Save of nothing", actions.Save, True
Check "the predefined ones are back", Codes(actions.GetBillActions), _
    "Save:0;Delete:0;Check:0;UnCheck:0;MultiCheck:0;Close:0;Print:0;Refuse:0;"

Check "the type library", CreateObject("WScript.Shell").RegRead( _
    "HKCR\TypeLib\{2B7C9F10-4E6D-4B0A-9C43-7D5F1E8A6001}\1.0\"), "Tavio bill actions, scenarios and messages"

Function Codes(list)
  Dim key
  Codes = ""
  For Each key In list
    Codes = Codes & key & ":" & list(key)("FStatus") & ";"
  Next
End Function
