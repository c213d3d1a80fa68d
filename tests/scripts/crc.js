// clsCRC from JScript: values, exact types, errors.
try {
  var crc = new ActiveXObject("Tornby.clsCRC");
  check("CRC-32", crc.AddString("123456789"), -873187034);
  crc.Algorithm = 0;
  check("CRC-16", crc.CalculateString("123456789"), 12739);
  crc.Algorithm = 7;
  check("unknown algorithm", typeof crc.Value, "undefined");
  crc.Algorithm = 1;
  check("register", ~crc.WIN64_AddCrc32("123456789", -1), -873187034);
  check("missing file", crc.CalculateFile("no such file"), -1);
  check("empty text", error_of(function () { crc.AddString(""); }), "9 Subscript out of range");
  check("a word for a number", error_of(function () { crc.Value = "word"; }), "13 Type mismatch");
  crc.Value = 5;
  check("inverted", crc.Value, -6);
} catch (error) {
  WScript.Echo("FAILED " + error.number + " " + error.message);
  ++failures;
}

if (failures === 0) WScript.Echo("passed");
WScript.Quit(failures);
