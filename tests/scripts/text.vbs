' clsEncryptXOR, clsApi and clsWebEncryption from VBScript: values, types, changed variables, errors.
' Every character of the code page but NUL.
everything = ""
For code = 1 To 255
  everything = everything & Chr(code)
Next

Set cipher = CreateObject("Tornby.clsEncryptXOR")
Check "default key", cipher.Key, "tamblerk"
cipher.Key = "k"
Check "digits", cipher.HexEncrypt("AB"), "2A002900"
Check "digits back", cipher.HexDecrypt("2a00 2900" & vbCrLf), "AB"
Check "text back", cipher.Decrypt(cipher.Encrypt(everything)), everything
result = cipher.HexDecrypt("no digits")
CheckError "no digits", 13, "Type mismatch"
cipher.Key = ""
Check "empty key", cipher.Encrypt("AB"), ""
cipher.Key = "a longer key"

Set api = CreateObject("Tornby.clsApi")
Set files = CreateObject("Scripting.FileSystemObject")
folder = files.GetSpecialFolder(2) & "\"
name = folder & "tornby_text.txt"
Check "saving", api.apiSaveFile(name, everything), True
Check "its type", TypeName(api.apiSaveFile(name, everything)), "Boolean"
Check "the size", files.GetFile(name).Size, 257
Check "reading", api.ApiReadFile(name), everything & vbCrLf
Check "enciphered", api.apiSaveFile(name, cipher.HexEncrypt(everything)), True
Check "deciphered", cipher.HexDecrypt(api.ApiReadFile(name)), everything
Check "nothing beside it", files.FileExists(name & ".saving~"), False
files.DeleteFile name
Check "a missing file", api.ApiReadFile(name), ""
Check "a folder", api.apiSaveFile(folder, "x"), False

Set web = CreateObject("Tornby.clsWebEncryption")
text = "AB"
Check "web form", web.Encrypt(text, "k"), "Kik="
Check "the variable", text, "*)"
text = "Kik="
Check "text back", web.Decrypt(text, "k"), "AB"
Check "the variable", text, "AB"
text = everything
encoded = web.Encrypt(text, "a longer key")
Check "every character", web.Decrypt(encoded, "a longer key"), everything
Check "a value, not a variable", web.Encrypt("A" & "B", "k"), "Kik="
result = web.Encrypt(text, "")
CheckError "empty key", 11, "Division by zero"
Check "strings", web.bsDecodeString(web.bsEncodeString("foob")), "foob"
result = web.bsDecodeString("AAAAA")
CheckError "length", -2147221504, "Length should be a multiple of 4."
result = web.bsDecodeString("AA*A")
CheckError "character", -2147221504, "Illegal character."

bytes = web.bsEncode(Array(102, 111, 111, 98))
Check "bytes", VarType(bytes), 8209
Dim list(3)
For i = 0 To 3
  list(i) = 102 + i
Next
Check "bytes of a variable", VarType(web.bsEncode2(list, 4)), 8209
Check "bytes back", VarType(web.bsDecode(bytes)), 8209
Check "no bytes", VarType(web.bsEncode2(list, 0)), 8209
bytes = web.bsEncode2(list, 5)
CheckError "count", 9, "Subscript out of range"
bytes = web.bsDecode(Array(65, 65, 65, 65, 65))
CheckError "length", -2147221504, "Length should be a multiple of 4."
bytes = web.bsDecode(Array(65, 65, 42, 65))
CheckError "character", -2147221504, "Illegal character."
bytes = web.bsEncode(Array(256))
CheckError "no byte", 6, "Overflow"
bytes = web.bsEncode("foo")
CheckError "no array", 13, "Type mismatch"

If failures = 0 Then WScript.Echo "passed"
WScript.Quit failures
