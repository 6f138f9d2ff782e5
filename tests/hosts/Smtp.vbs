' Without the platform's mail gateway a mail goes out over SMTP, here to the server whose address is in MAIL_SERVER.
Dim shell, server
Set shell = CreateObject("WScript.Shell")
server = shell.ExpandEnvironmentStrings("%MAIL_SERVER%")
Dim gateway
gateway = shell.RegRead("HKEY_LOCAL_MACHINE\Software\Classes\MorlaMobileOpen.MorlaSendMail\CLSID\")
shell.RegWrite "HKEY_LOCAL_MACHINE\Software\Classes\CLSID\" & gateway & "\InprocServer32\", "gone.dll"
Check "a server to send to", InStr(server, ":") > 0, True

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

Check "SendEmail without a server", message.SendEmail(Nothing), False

Dim profile, settings
Set profile = CreateObject("TavioClientBase.UserProfile")
profile.UserIndependent = True
Set settings = profile.Load("Base_EMAIL", "Setting")
settings("txtMailSrv") = server
profile.Save "Base_EMAIL", "Setting", settings
Check "SendEmail", message.SendEmail(Nothing), True
Check "not through the gateway", info.GetData(props, "SELECT FID FROM t_MailOutbox").RecordCount, CLng(0)

settings("txtMailSrv") = "127.0.0.1:1"
profile.Save "Base_EMAIL", "Setting", settings
Check "SendEmail to nobody who listens", message.SendEmail(Nothing), False
Check "its box", Boxes(), "[Morla提示] 发送邮件失败！ (1)"
