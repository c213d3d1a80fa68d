// clsEncryptXOR, clsApi and clsWebEncryption from JScript.
try {
  var cipher = new ActiveXObject("Tornby.clsEncryptXOR");
  var any = "a\u0000\u20AC\uD800\u0416";
  check("every character", cipher.HexDecrypt(cipher.HexEncrypt(any)), any);
  check("every character", cipher.Decrypt(cipher.Encrypt(any)), any);

  var api = new ActiveXObject("Tornby.clsApi");
  var files = new ActiveXObject("Scripting.FileSystemObject");
  var name = files.GetSpecialFolder(2) + "\\tornby_text_js.txt";
  check("saving", api.apiSaveFile(name, "\u20ACuro"), true);
  check("reading", api.ApiReadFile(name), "\u20ACuro\r\n");
  files.DeleteFile(name);
  check("saving nowhere", api.apiSaveFile("", "x"), false);

  var web = new ActiveXObject("Tornby.clsWebEncryption");
  var text = "AB";
  check("web form", web.Encrypt(text, "k"), "Kik=");
  check("a JScript variable stays", text, "AB");
  check("text back", web.Decrypt("Kik=", "k"), "AB");
  check("outside the code page", web.bsEncodeString("\u0416"), "Pw==");
  check("illegal", error_of(function () { web.bsDecodeString("A==="); }), "-2147221504 Illegal character.");
} catch (error) {
  WScript.Echo("FAILED " + error.number + " " + error.message);
  ++failures;
}

if (failures === 0) WScript.Echo("passed");
WScript.Quit(failures);
