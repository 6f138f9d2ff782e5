var store = new ActiveXObject("TavioSharedProps.PropStore");
var props = store.GetProperty(0, "PropsString");
var info = new ActiveXObject("TavioMClass.ClassInfo");
var message = new ActiveXObject("TavioClassBillAction.Message");

// This language knows one kind of assignment, which has to do for properties that take a reference.
message.ClassTypeID = 1005;
message.ClassType = info.GetClassType(props, 1005);
message.TableInfo = info.GetTableInfo(props, 1005);
var bill = info.GetBillData(props, 1005, 5002);
message.Data = bill;

var raised = "";
try {
  message.AddUser("nobody");
} catch (error) {
  raised = "raised";
}
check("user that is no number", raised, "raised");

var actions = new ActiveXObject("TavioClassBillAction.BillActions");
check("a method that is only looked at", typeof actions.RemoveAll + " " + boxes(), "unknown ");
actions.ClassTypeID = 1005;
actions.Initialize();
message.RefreshVariableList();
check("SetMessage", message.SetMessage(actions.GetMessage("Save", 3)), true);
check("RefreshVariableValue", message.RefreshVariableValue(bill), true);
check("preview", message.TransMessage("[FBillNo] [FCustomer] [FCheckState]", false, true, false),
      "CGSQ000002 北方机械厂 [FCheckState]");
check("all flags", message.TransMessage("[FBillNo]", true, true, true), "");
check("box for all flags", boxes(),
      "[Morla提示] TavioClassBillAction.Message : TransMessage\\n不能同时翻译标题和内容! (1)");
