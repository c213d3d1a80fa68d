// A client in JScript. The other languages' clients do the same.
// Usage: cscript //nologo classes.js settings-file
function show(line) {
  WScript.Echo(line);
}

// A checksum is a signed number; >>> 0 makes it the unsigned one that is usually written.
function hexadecimal(number) {
  return ("0000000" + (number >>> 0).toString(16).toUpperCase()).slice(-8);
}

var crc = new ActiveXObject("Tornby.clsCRC");
crc.AddString("123456789");
show("checksum of 123456789: " + hexadecimal(crc.Value));

var api = new ActiveXObject("Tornby.clsApi");
var text = api.ApiReadFile(WScript.Arguments(0));  // "": empty, or it cannot be read
crc.Clear();
show("file: " + text.length + " characters, checksum " + hexadecimal(crc.AddString(text)));

// undefined would be an empty file, or a 32-bit program on 64-bit Windows. JScript cannot tell -1, "it cannot be read", from
// the checksum FFFFFFFF.
show("missing file: " + (crc.CalculateFile("C:\\no such file") === -1 ? "it cannot be read" : "it is there"));

var cipher = new ActiveXObject("Tornby.clsEncryptXOR");
var plain = "Z\u00FCrich, 3 \u20AC";
cipher.Key = "k\u00E9y";
var digits = cipher.HexEncrypt(plain);
show("enciphered: " + digits);
show("deciphered: " + (cipher.HexDecrypt(digits) === plain ? "the same text" : "another text"));

var settings = new ActiveXObject("Tornby.XML_Settings");
settings.FileName = WScript.Arguments(0);
var recent = new VBArray(settings.ExtractRecent()).toArray();
for (var i = 0; i < recent.length; ++i) {
  show("recent file: " + recent[i]);
}
for (var groups = new Enumerator(settings.FindNodes()); !groups.atEnd(); groups.moveNext()) {
  show("group: " + groups.item());
}

// A call that fails throws. The lower half of a result 0x800Axxxx is the usual number.
function show_error(act) {
  try {
    act();
  } catch (error) {
    var usual = (error.number >>> 16) === 0x800A ? error.number & 0xFFFF : error.number;
    show("error " + usual + ": " + error.message);
  }
}
show_error(function () { crc.AddString(""); });
show_error(function () { new ActiveXObject("Tornby.clsWebEncryption").bsDecodeString("A==="); });
