// The CRC-32 of each file named on the command line, from JScript.
// Usage: cscript //nologo checksums.js file...
var crc = new ActiveXObject("Tornby.clsCRC");
for (var i = 0; i < WScript.Arguments.length; ++i) {
  var result = crc.CalculateFile(WScript.Arguments(i));
  // A checksum is a signed number; >>> 0 makes it the unsigned one that is usually written.
  WScript.Echo((result >>> 0).toString(16) + "  " + WScript.Arguments(i));
}
