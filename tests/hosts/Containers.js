var record = new ActiveXObject("Vexo.Dictionary");
record.Value("FCode") = "Save";
record.Value("FStatus") = 2;
check("default member", record("FCode"), "Save");
check("method", Boolean(record.Lookup("FStatus")), true);
check("absent key", record("FMask"), undefined);

var list = new ActiveXObject("Vexo.Vector");
list.Add(record);
list.Add(record.Clone());
list(2).Value("FCode") = "检查";
var codes = [];
for (var items = new Enumerator(list); !items.atEnd(); items.moveNext()) codes.push(items.item()("FCode"));
check("Enumerator over a list", codes.join(), "Save,检查");
record.Value("Next") = list(2);
check("package in a package", record("Next")("FCode"), "检查");

var raised = "";
try { list.Item(3); } catch (error) { raised = "raised"; }
check("position behind the end", raised, "raised");
