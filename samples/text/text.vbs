' Enciphers a text file into another one, reads that back, deciphers it and compares; then does the same in the web
' form, which is shorter.
' Usage: cscript //nologo text.vbs text-file enciphered-file web-file key
Option Explicit

Dim api, cipher, web, original, started, text, key
Set api = CreateObject("Tornby.clsApi")
Set cipher = CreateObject("Tornby.clsEncryptXOR")
Set web = CreateObject("Tornby.clsWebEncryption")
key = WScript.Arguments(3)

Sub Report(what, right)
  WScript.Echo Left(what & Space(46), 46) & right
End Sub

Function Verdict(condition)
  If condition Then Verdict = "yes" Else Verdict = "NO"
End Function

Sub Save(name, text)
  If Not api.apiSaveFile(name, text) Then
    WScript.Echo "cannot save " & name
    WScript.Quit 1
  End If
End Sub

started = Timer
original = api.ApiReadFile(WScript.Arguments(0))
Report "characters read", Len(original)

' Hexadecimal digits survive a file in any code page. The line break that apiSaveFile adds does not matter.
cipher.Key = key
Save WScript.Arguments(1), cipher.HexEncrypt(original)
text = api.ApiReadFile(WScript.Arguments(1))
Report "hexadecimal digits saved", Len(text) - 2
Report "differs from the text", Verdict(text <> original)
Report "deciphered, it is the text again", Verdict(cipher.HexDecrypt(text) = original)

' Encrypt and Decrypt change the variable that they are given. Base64 has no room for a line break: cut it off.
text = original
Save WScript.Arguments(2), web.Encrypt(text, key)
text = api.ApiReadFile(WScript.Arguments(2))
text = Left(text, Len(text) - 2)
Report "Base64 digits saved", Len(text)
web.Decrypt text, key
Report "deciphered, it is the text again", Verdict(text = original)
Report "seconds", FormatNumber(Timer - started, 2)
