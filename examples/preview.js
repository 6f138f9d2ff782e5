// Prints the message of an action as its recipients would read it:  cscript /nologo preview.js
var classTypeId = 1005, billId = 5001;
var props = new ActiveXObject("TavioSharedProps.PropStore").GetProperty(0, "PropsString");
var info = new ActiveXObject("TavioMClass.ClassInfo");

var actions = new ActiveXObject("TavioClassBillAction.BillActions");
actions.ClassTypeID = classTypeId;
actions.Initialize();
var message = new ActiveXObject("TavioClassBillAction.Message");
message.ClassTypeID = classTypeId;
message.ClassType = info.GetClassType(props, classTypeId);
message.TableInfo = info.GetTableInfo(props, classTypeId);
message.RefreshVariableList();
var content = actions.GetMessage("MultiCheck", 8);
message.SetMessage(content);
message.RefreshVariableValue(info.GetBillData(props, classTypeId, billId));

WScript.Echo(content.Value("FTitle"));
WScript.Echo(message.TransMessage(content.Value("FMessage"), false, true));
WScript.Echo("Done.");
