' A client in VBScript. The other languages' clients do the same.
' Usage: cscript //nologo classes.vbs settings-file
Option Explicit

Dim crc, api, cipher, settings, web, text, digits, path, group

Function Hexadecimal(number)
  Hexadecimal = Right("0000000" & Hex(number), 8)
End Function

Set crc = CreateObject("Tornby.clsCRC")
crc.AddString "123456789"
WScript.Echo "checksum of 123456789: " & Hexadecimal(crc.Value)

Set api = CreateObject("Tornby.clsApi")
text = api.ApiReadFile(WScript.Arguments(0))   ' "": empty, or it cannot be read
crc.Clear
WScript.Echo "file: " & Len(text) & " characters, checksum " & Hexadecimal(crc.AddString(text))

Select Case TypeName(crc.CalculateFile("C:\no such file"))
  Case "Long" WScript.Echo "missing file: it is there"
  Case "Empty" WScript.Echo "missing file: empty, or a 32-bit program on 64-bit Windows"
  Case Else WScript.Echo "missing file: it cannot be read"
End Select

' Chr takes codes of the ANSI code page: here those of Windows-1252 for u with dots, the euro sign and e with an accent.
Set cipher = CreateObject("Tornby.clsEncryptXOR")
text = "Z" & Chr(252) & "rich, 3 " & Chr(128)
cipher.Key = "k" & Chr(233) & "y"
digits = cipher.HexEncrypt(text)
WScript.Echo "enciphered: " & digits
If cipher.HexDecrypt(digits) = text Then
  WScript.Echo "deciphered: the same text"
Else
  WScript.Echo "deciphered: another text"
End If

Set settings = CreateObject("Tornby.XML_Settings")
settings.FileName = WScript.Arguments(0)
For Each path In settings.ExtractRecent
  WScript.Echo "recent file: " & path
Next
For Each group In settings.FindNodes
  WScript.Echo "group: " & group
Next

On Error Resume Next
crc.AddString ""
WScript.Echo "error " & Err.Number & ": " & Err.Description
Err.Clear
Set web = CreateObject("Tornby.clsWebEncryption")
web.bsDecodeString "A==="
WScript.Echo "error " & Err.Number & ": " & Err.Description
Err.Clear
