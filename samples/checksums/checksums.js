// The CRC-32 of each file named on the command line, from JScript.
// Usage: cscript //nologo checksums.js file...    (on 64-bit Windows the 32-bit script host is syswow64\cscript.exe)
var api = new ActiveXObject("Tornby.clsApi");
var crc = new ActiveXObject("Tornby.clsCRC");

// A checksum is a signed number; >>> 0 makes it the unsigned one that is usually written.
function hexadecimal(number) {
  return ("0000000" + (number >>> 0).toString(16).toUpperCase()).slice(-8);
}

for (var i = 0; i < WScript.Arguments.length; ++i) {
  var text = api.ApiReadFile(WScript.Arguments(i));
  var shown = "(none)  ";  // the file is empty or cannot be read
  if (text !== "") {
    crc.Clear();
    crc.AddString(text);
    shown = hexadecimal(crc.Value);
  }
  WScript.Echo(shown + "  " + WScript.Arguments(i));
}
