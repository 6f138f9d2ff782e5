Dim store, process, name, props, info
Set store = CreateObject("TavioSharedProps.PropStore")
process = 0
name = "PropsString"
props = store.GetProperty(process, name)
Set info = CreateObject("TavioMClass.ClassInfo")

Dim message, previous
Set message = CreateObject("TavioClassBillAction.Message")
message.ClassTypeID = 1005
Check "no package yet", message.GetMessage Is Nothing, True
message.NewMessage
Check "failure box without a template", Boxes(), _
    "[Morla提示] TavioClassBillAction.Message : NewMessage\n请先设置本组件关联的业务对象模板信息! (1)"
Check "still no package", message.GetMessage Is Nothing, True

' A property that refuses its value is the one failure that reaches the host.
Dim number, description
On Error Resume Next
message.GroupInfo = 5
number = Err.Number
description = Err.Description
On Error GoTo 0
Check "refused GroupInfo", number <> 0, True
Check "refused GroupInfo, description", description, "类型不匹配"

Set message.ClassType = info.GetClassType(props, 1005)
Set message.TableInfo = info.GetTableInfo(props, 1005)
Set message.ClassTypeEntry = info.GetClassTypeEntry(props, 1005)
message.MustSelectMsgUser = True
Check "MustSelectMsgUser", message.MustSelectMsgUser, True
message.MustSelectMsgUser = False
message.RefreshVariableList
Check "variables", Keys(message.GetVariableList), "FBillNo;FDate;FCustomer;FDept;FManager;FAmount;FQty;FCurrency;FUrgent;FExplanation;"
Check "variable users", Keys(message.GetVariableUser), "FManager;FBiller;"

message.NewMessage
Check "a new package", Keys(message.GetMessage), _
    "FID;FTitle;FMessage;FMessageDescriptions;FSendType;MessageUsers;EmailUsers;SMSUsers;"

' AddUser and RemoveUser take a 32-bit integer by reference; a script's variables are of other types.
Dim user
user = "16395"
Check "AddUser, a text", message.AddUser(user), True
Check "the variable takes the integer back", user, CLng(16395)
user = CInt(7)
Check "AddUser, a 16-bit integer", message.AddUser(user), True
Check "RemoveUser", message.RemoveUser(16395), True
Check "RemoveUser of a stranger", message.RemoveUser(99), False
Check "recipients", Keys(message.GetMessage.Value("MessageUsers")), "7;"
Check "RemoveAllUsers", message.RemoveAllUsers, False
Check "no recipients", message.GetMessage.Value("MessageUsers").Count, CLng(0)

' The seeded message of a stored action.
Dim actions, package
Set actions = CreateObject("TavioClassBillAction.BillActions")
actions.ClassTypeID = 1005
actions.Initialize
Set package = actions.GetMessage("MultiCheck", 24)
Check "SetMessage", message.SetMessage(package), True
Check "the package itself", message.GetMessage Is package, True
Check "description", package("FMessageDescriptions"), "[部门] 的采购申请 [单据编号]（[摘要]）等待您审核。"

' Flags that are not followed come back false, in the variables of the script too.
Dim caption, value, back
caption = True
value = True
Check "captions before values", message.TransMessage("[FDept] [FNo]", caption, value), "[部门] [FNo]"
Check "followed flag", caption, True
Check "flag of the script", value, False
back = True
Check "names before captions", message.TransMessage("[部门]", caption, value, back), "[FDept]"
Check "flag of the script, once more", caption, False
Check "no flag", message.TransMessage("[FDept]"), ""
Check "box without a flag", Boxes(), "[Morla提示] TavioClassBillAction.Message : TransMessage\n未指定需要进行何种翻译! (1)"

Dim bill
Set bill = info.GetBillData(props, 1005, 5001)
Set message.Data = bill
Check "RefreshVariableValue", message.RefreshVariableValue(bill), True
Check "value of a looked-up record", message.GetVariableList.Value("FCustomer")("FValue"), "华东贸易公司"
Check "preview", message.TransMessage(package("FMessage"), False, True), _
    "生产部 的采购申请 CGSQ000001（第二季度备料）等待您审核。"

Dim group
Set group = CreateObject("Vexo.Dictionary")
group("FCode") = "mnuEditUse"
group("FDept") = "两个部门"
Set message.GroupInfo = group
Check "values of the group only", message.TransMessage("[FDept] [FBillNo]", False, True), "两个部门 [FBillNo]"
group("FCode") = "mnuEditSave"

Dim excluded
Set excluded = CreateObject("Vexo.Vector")
excluded.Add 16398
Set message.ExcludeUser = excluded
Check "SendMessage, recipients left out", message.SendMessage, True
Check "the list of the package stays", Keys(package("MessageUsers")), "16395;16396;16398;"
Check "inbox", Inbox(), _
    "16394>16395 采购申请待审核: 生产部 的采购申请 CGSQ000001（第二季度备料）等待您审核。 FUNCID:-1|FFlag:1005|FInterID:5001 0 1;" & _
    "16394>16396 采购申请待审核: 生产部 的采购申请 CGSQ000001（第二季度备料）等待您审核。 FUNCID:-1|FFlag:1005|FInterID:5001 0 1;" & _
    "16394>16394 采购申请待审核: 生产部 的采购申请 CGSQ000001（第二季度备料）等待您审核。 FUNCID:-1|FFlag:1005|FInterID:5001 0 1;"

' A key that is no user: one box, nothing sent.
Dim chosen
Set chosen = CreateObject("Vexo.Dictionary")
Set chosen("somebody") = CreateObject("Vexo.Dictionary")
Check "SendMessage to nobody known", message.SendMessage(chosen), False
Check "its box", Boxes(), "[Morla提示] TavioClassBillAction.Message : SendMessage\n类型不匹配 (1)"
Check "nothing was sent", info.GetData(props, "SELECT FID FROM t_Inbox").RecordCount, CLng(3)

Function Keys(package)
  Dim key
  Keys = ""
  For Each key In package
    Keys = Keys & key & ";"
  Next
End Function

Function Inbox()
  Dim rows
  Set rows = info.GetData(props, "SELECT * FROM t_Inbox ORDER BY FID")
  Inbox = ""
  Do Until rows.EOF
    Inbox = Inbox & rows("FSenderID") & ">" & rows("FRecipientID") & " " & rows("FTitle") & ": " & rows("FContent") & _
        " " & rows("FCommand") & " " & rows("FFlag1") & " " & rows("FFlag2") & ";"
    rows.MoveNext
  Loop
End Function
