' Lets the user pick a file and prints its checksum. The next run starts in the folder of the last one.
' Usage: cscript //nologo pick.vbs [folder]    the folder to start in, only needed the first time
Option Explicit

Dim api, dialogs, crc, name, text
Set api = CreateObject("Tornby.clsApi")
Set dialogs = CreateObject("Tornby.clsDIALOGS")
Set crc = CreateObject("Tornby.clsCRC")

If WScript.Arguments.Count > 0 Then dialogs.strInitialDir = WScript.Arguments(0)
dialogs.strTitle = "Pick a file"
dialogs.strFilter = "Text files (*.txt;*.md)|*.txt;*.md|All files (*.*)|*.*"

WScript.Echo "starting in " & dialogs.strInitialDir
name = dialogs.strGetOpenFileName("")
If name = "" Then
  If dialogs.lngDialogError = 0 Then
    WScript.Echo "nothing picked"
  Else
    WScript.Echo "failed: " & dialogs.strDialogError
  End If
Else
  text = api.ApiReadFile(name)
  If text = "" Then
    WScript.Echo "empty or not readable: " & name
  Else
    crc.AddString text
    WScript.Echo Right("0000000" & Hex(crc.Value), 8) & "  " & name
  End If
End If
