function codes(list, show) {
  var shown = [];
  for (var items = new Enumerator(list); !items.atEnd(); items.moveNext()) shown.push(show(items.item()));
  return shown.join(" ");
}

// Scenarios: a tree as the designer reads it.
var scenarios = new ActiveXObject("TavioClassBillAction.BillEnvironments");
function place(scenario) { return scenario("Level") + ":" + scenario("FMask") + "<" + scenario("Parent"); }
check("GetSortList", codes(scenarios.GetSortList(), place),
      "0:7<0 1:4<7 1:3<7 2:2<3 2:1<3 0:56<0 1:16<56 1:32<56 1:8<56 0:64<0");
check("by ID", codes(scenarios.GetSortList(0, 8), place), "1:32<56");
check("of a bill type", codes(scenarios.GetBillTypeList(2), String), "1 2 3 4 7 8 16 32 56");
check("GetClassMenu", scenarios.GetClassMenu()("PurchaseRequest")("FClassTypeID"), 1005);
check("bill type without a bit", scenarios.GetBillTypeList(32) === null, true);
check("its box", boxes(), "[Morla提示] TavioClassBillAction.BillEnvironments : GetBillTypeList \\n溢出 (1)");

var catalogue = new ActiveXObject("TavioClassBillAction.PredefineActions");
check("GetDefaultActions", codes(catalogue.GetDefaultActions(1), function(action) { return action("FCode"); }),
      "Save Delete Check UnCheck Close Print CopyNew");

// A new bill type.
var actions = new ActiveXObject("TavioClassBillAction.BillActions");
var template = new ActiveXObject("Vexo.Dictionary");
template.Value("FID") = 1006;
template.Value("FBillTypeID") = 2;
actions.ClassType = template;
check("ClassTypeID", actions.ClassTypeID, 1006);
actions.TableInfo = template;
actions.vctPredefineAction = catalogue.GetList();
actions.NewBill();
function state(code) { return code + ":" + actions.Item(code)("FStatus"); }
check("NewBill", codes(actions.GetBillActions(), state),
      "Save:1 Delete:1 Check:1 UnCheck:1 MultiCheck:1 Print:1 CopyNew:1");
check("Save", actions.Save(), true);
check("stored", codes(actions.GetBillActions(), state),
      "Save:0 Delete:0 Check:0 UnCheck:0 MultiCheck:0 Print:0 CopyNew:0");

// A collection of the host's own, and whose it is.
var mine = new ActiveXObject("Vexo.Dictionary");
mine.Value("Save") = actions.Item("Save");
mine.Value("Save").Value("FClassTypeID") = 77;
actions.SetBillActions(mine);
check("SetBillActions", actions.ClassTypeID, 77);
actions.GetBillActions().Remove("Save");
check("the host's collection itself", mine.Count, 0);
