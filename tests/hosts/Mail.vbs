Dim props, info, files
props = CreateObject("TavioSharedProps.PropStore").GetProperty(0, "PropsString")
Set info = CreateObject("TavioMClass.ClassInfo")
Set files = CreateObject("Scripting.FileSystemObject")

Dim actions, package, message
Set actions = CreateObject("TavioClassBillAction.BillActions")
actions.ClassTypeID = 1005
actions.Initialize
Set message = CreateObject("TavioClassBillAction.Message")
message.ClassTypeID = 1005
Set message.ClassType = info.GetClassType(props, 1005)
Set message.TableInfo = info.GetTableInfo(props, 1005)
message.RefreshVariableList
Set package = actions.GetMessage("MultiCheck", 8)
message.SetMessage package
message.RefreshVariableValue info.GetBillData(props, 1005, 5001)

Dim text, mail
text = "生产部 的采购申请 CGSQ000001（第二季度备料）等待您审核。"
Check "SendEmail", message.SendEmail(Nothing), True
Set mail = info.GetData(props, "SELECT * FROM t_MailOutbox")
Check "one mail", mail.RecordCount, CLng(1)
Check "addresses", mail("FRecipients").Value, "lina@example.com;wangfang@example.com;zhaolei@example.com"
Check "subject", mail("FSubject").Value, "采购申请待审核"
Check "body", mail("FBody").Value, text
Check "the printed bill", Left(StartOf(mail("FAttachment").Value), 5), "%PDF-"

' User 16399 has no number.
Check "SendShortMessage", message.SendShortMessage, True
' Of the three recipients of the message one is disabled.
Check "SendSMS", message.SendSMS, True
Dim notice
Set notice = info.GetData(props, "SELECT * FROM t_SmsOutbox ORDER BY FID")
Check "content", notice("FContent").Value, "采购申请待审核 : " & text
notice.MoveNext
Check "numbers of the approval notice", notice("FRecipients").Value, "13800000002,13800000003"

Set package("EmailUsers").Value("C2") = Customer(2)
Check "SendEmail to a customer too", message.SendEmail(Nothing), True
Set mail = info.GetData(props, "SELECT FRecipients FROM t_MailOutbox ORDER BY FID DESC")
Check "addresses of both types", mail("FRecipients").Value, _
    "lina@example.com;wangfang@example.com;zhaolei@example.com;beifang@example.com"

Function Customer(id)
  Set Customer = CreateObject("Vexo.Dictionary")
  Customer("FUserType") = "C"
  Customer("FUserID") = id
End Function

Function StartOf(path)
  Dim opened
  Set opened = files.OpenTextFile(path)
  StartOf = opened.ReadLine
  opened.Close
End Function
