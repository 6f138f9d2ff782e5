// What a test script is written with.
var failures_ = 0, boxesRead_ = 0;

// One result, compared with what it must be; a number never equals a text.
function check(name, actual, expected) {
  if (actual === expected) {
    WScript.Echo("ok " + name);
  } else {
    ++failures_;
    WScript.Echo("FAILED " + name + ": " + typeof actual + " " + plain(actual) + " instead of " + typeof expected +
                 " " + plain(expected));
  }
}

// Some hosts corrupt their memory when they print other characters than these to a pipe.
function plain(value) {
  var text = String(value), shown = "";
  for (var i = 0; i < text.length; ++i) {
    var unit = text.charCodeAt(i);
    shown += unit > 126 ? "\\u" + unit.toString(16) : text.charAt(i);
  }
  return shown;
}

// The message boxes shown since the last call, one line each: [title] text (buttons).
function boxes() {
  var files = new ActiveXObject("Scripting.FileSystemObject"), shown = [], number = 0;
  if (!files.FileExists(WScript.Arguments.Item(0))) return "";
  var lines = files.OpenTextFile(WScript.Arguments.Item(0));
  for (; !lines.AtEndOfStream; ++number) {
    var line = lines.ReadLine();
    if (number >= boxesRead_) shown.push(line);
  }
  lines.Close();
  boxesRead_ = number;
  return shown.join("\n");
}

// The button that boxes are answered with from now on.
function answer(button) {
  var file = new ActiveXObject("Scripting.FileSystemObject").CreateTextFile(WScript.Arguments.Item(1), true);
  file.WriteLine(String(button));
  file.Close();
}

function finish() {
  check("no further box", boxes(), "");
  WScript.Echo("finished");
  WScript.Quit(failures_);
}

