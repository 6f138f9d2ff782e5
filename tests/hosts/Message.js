var store = new ActiveXObject("TavioSharedProps.PropStore");
var props = store.GetProperty(0, "PropsString");
var info = new ActiveXObject("TavioMClass.ClassInfo");
var message = new ActiveXObject("TavioClassBillAction.Message");

function keys(record) {
  var names = [];
  for (var items = new Enumerator(record); !items.atEnd(); items.moveNext()) names.push(items.item());
  return names.join();
}

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

// To chosen users: excluded ones leave the host's own list, the users of the bill's fields join it.
var chosen = new ActiveXObject("Vexo.Dictionary"), excluded = new ActiveXObject("Vexo.Vector");
chosen.Value("16395") = new ActiveXObject("Vexo.Dictionary");
chosen.Value("16399") = new ActiveXObject("Vexo.Dictionary");
excluded.Add(16399);
message.ExcludeUser = excluded;
check("SendMessage", message.SendMessage(chosen), true);
check("the host's list", keys(chosen).indexOf("16399"), -1);
var told = [], rows = info.GetData(props, "SELECT FRecipientID FROM t_Inbox ORDER BY FRecipientID");
for (; !rows.EOF; rows.MoveNext()) told.push(rows.Fields("FRecipientID").Value);
check("inbox", told.join(), "16394,16395,16397");
