Dim store, process, name, props, info
Set store = CreateObject("TavioSharedProps.PropStore")
process = 0
name = "PropsString"
props = store.GetProperty(process, name)
Set info = CreateObject("TavioMClass.ClassInfo")

Dim message
Set message = CreateObject("TavioClassBillAction.Message")
message.ClassTypeID = 1005
message.NewMessage
Check "failure box without a template", Boxes(), _
    "[Morla提示] TavioClassBillAction.Message : NewMessage\n请先设置本组件关联的业务对象模板信息! (1)"

' A property that refuses its value is the one failure that reaches the host.
On Error Resume Next
message.GroupInfo = 5
Dim description
description = Err.Description
On Error GoTo 0
Check "refused GroupInfo, description", description, "类型不匹配"

Set message.ClassType = info.GetClassType(props, 1005)
Set message.TableInfo = info.GetTableInfo(props, 1005)
Set message.ClassTypeEntry = info.GetClassTypeEntry(props, 1005)
message.RefreshVariableList
Check "variables", Keys(message.GetVariableList), "FBillNo;FDate;FCustomer;FDept;FManager;FAmount;FQty;FCurrency;FUrgent;FExplanation;"
Check "variable users", Keys(message.GetVariableUser), "FManager;FBiller;"

' AddUser and RemoveUser take a 32-bit integer by reference; a script's variables are of other types.
Dim user
user = "16395"
Check "AddUser, a text", message.AddUser(user), True
Check "the variable stays as it was", user, "16395"
Check "RemoveUser", message.RemoveUser(16395), True
Check "no recipients", message.GetMessage.Value("MessageUsers").Count, CLng(0)

' The seeded message of a stored action.
Dim actions, package
Set actions = CreateObject("TavioClassBillAction.BillActions")
actions.ClassTypeID = 1005
actions.Initialize
Set package = actions.GetMessage("MultiCheck", 24)
Check "SetMessage", message.SetMessage(package), True
Check "the package itself", message.GetMessage Is package, True

' Flags that are not followed come back false, in the variables of the script too.
Dim caption, value
caption = True
value = True
Check "captions before values", message.TransMessage("[FDept] [FNo]", caption, value), "[部门] [FNo]"
Check "followed flag", caption, True
Check "flag of the script", value, False
Check "no flag", message.TransMessage("[FDept]"), ""
Check "box without a flag", Boxes(), "[Morla提示] TavioClassBillAction.Message : TransMessage\n未指定需要进行何种翻译! (1)"

Dim bill
Set bill = info.GetBillData(props, 1005, 5001)
Set message.Data = bill
Check "RefreshVariableValue", message.RefreshVariableValue(bill), True
Check "preview", message.TransMessage(package("FMessage"), False, True), _
    "生产部 的采购申请 CGSQ000001（第二季度备料）等待您审核。"

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
