// XML_Settings, ValueCollection and PathClass from JScript.
try {
  var values = new ActiveXObject("Tornby.ValueCollection");
  values.Add("A", "1");
  values.Add("B", "2");
  values.Add("C", "3");
  check("duplicate", values.Add("a", "4"), null);
  var met = "";
  for (var walk = new Enumerator(values); !walk.atEnd(); walk.moveNext()) {
    met += walk.item().Key;
    if (walk.item().Key === "A") {
      values.Remove("A");
      values.Add("D", "4");
    }
  }
  check("walk with changes", met, "ABCD");
  check("by position", values.Item(1).Value, "2");

  var settings = new ActiveXObject("Tornby.XML_Settings");
  settings.SaveSetting("GROUP", "KEY", "text");
  settings.SaveSetting("GROUP", "OTHER", "more");
  check("setting", settings.GetSetting("group", "key", ""), "text");
  var items = settings.ExtractBlock("GROUP");
  met = "";
  for (walk = new Enumerator(items); !walk.atEnd(); walk.moveNext()) met += walk.item() + ";";
  check("items", met, "text;more;");
  check("default member", items(2), "more");
  check("no group", settings.ExtractBlock("NONE"), null);

  var paths = new ActiveXObject("Tornby.PathClass");
  check("expanded", paths.ProcessPath("%DESKTOP%\\x", true), paths.Desktop + "\\x");
} catch (error) {
  WScript.Echo("FAILED " + error.number + " " + error.message);
  ++failures;
}

if (failures === 0) WScript.Echo("passed");
WScript.Quit(failures);
