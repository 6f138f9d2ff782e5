' The ways that a mail can take. Without the platform's mail gateway it goes out over SMTP, here to the server whose
' address is in MAIL_SERVER.
Dim server, data
server = CreateObject("WScript.Shell").ExpandEnvironmentStrings("%MAIL_SERVER%")
Check "a server to send to", InStr(server, ":") > 0, True
Set data = CreateObject("TavioDevPlatform.Data")

Dim props, info
props = CreateObject("TavioSharedProps.PropStore").GetProperty(0, "PropsString")
Set info = CreateObject("TavioMClass.ClassInfo")

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
package("FTitle") = "采购申请待审核" & vbCrLf & "Bcc: everybody@example.com"
package("FMessage") = package("FMessage") & vbCrLf & "." & vbCrLf & "第三行"
message.SetMessage package
message.RefreshVariableValue info.GetBillData(props, 1005, 5001)

data.SetSetting "MailWay", "refuse"
Check "SendEmail refused", message.SendEmail(Nothing), False
Check "its box", Boxes(), "[Morla提示] 发送邮件失败,请检查邮箱是否配置正确！ (1)"
Dim direct
Set direct = CreateObject("Jmail.Message")
direct.From = "a@example.com"
direct.AddRecipient "b@example.com"
Check "nor does anything else send", direct.Send(server), False
Check "and says why", direct.ErrorMessage, "本平台设置为不通过 SMTP 发送邮件"

data.SetSetting "MailWay", "smtp"
Check "SendEmail without a server", message.SendEmail(Nothing), False

Dim profile, settings
Set profile = CreateObject("TavioClientBase.UserProfile")
profile.UserIndependent = True
Set settings = profile.Load("Base_EMAIL", "Setting")
settings("txtMailSrv") = server
settings("chkSmtp") = True
settings("txtRZName") = "platform"
settings("txtRZPassword") = "secret"
profile.Save "Base_EMAIL", "Setting", settings
Check "SendEmail", message.SendEmail(Nothing), True
Check "not through the gateway", info.GetData(props, "SELECT FID FROM t_MailOutbox").RecordCount, CLng(0)

settings("txtMailSrv") = "127.0.0.1:1"
profile.Save "Base_EMAIL", "Setting", settings
Check "SendEmail to nobody who listens", message.SendEmail(Nothing), False
Check "its box", Boxes(), "[Morla提示] 发送邮件失败！ (1)"

Dim customer, mails
Set customer = CreateObject("Vexo.Dictionary")
customer("FUserType") = "C"
customer("FUserID") = 2
Set package("EmailUsers").Value("C2") = customer
data.SetSetting "MailWay", "outbox"
Check "SendEmail into the outbox, to a customer too", message.SendEmail(Nothing), True
Set mails = info.GetData(props, "SELECT FRecipients FROM t_MailOutbox")
Check "through the gateway", mails.RecordCount, CLng(1)
Check "addresses of both types", mails("FRecipients").Value, _
    "lina@example.com;wangfang@example.com;zhaolei@example.com;beifang@example.com"
