' A settings file's round trip: reads a file, changes a setting, adds a group, opens some files, saves, and shows what
' a second reader finds.
' Usage: cscript //nologo settings.vbs settings-file recent-file...
Option Explicit

Dim settings, reader, i, path, node, pair

Set settings = CreateObject("Tornby.XML_Settings")
settings.FileName = WScript.Arguments(0)
WScript.Echo "window width before: " & settings.GetSetting("WINDOW", "WIDTH", "(none)")
settings.SaveSetting "WINDOW", "WIDTH", "800"
settings.SaveSetting "WINDOW", "HEIGHT", "600"
settings.SaveSetting "USER", "NAME", "Ren" & Chr(233) & "e & <friends>"
For i = 1 To WScript.Arguments.Count - 1
  settings.UpdateRecent WScript.Arguments(i)   ' saves the file, too
Next

Set reader = CreateObject("Tornby.XML_Settings")
reader.FileName = WScript.Arguments(0)
WScript.Echo "window width after:  " & reader.GetSetting("WINDOW", "WIDTH", "(none)")
WScript.Echo "user:                " & reader.GetSetting("USER", "NAME", "(none)")

WScript.Echo "recent files, the newest first:"
For Each path In reader.ExtractRecent
  WScript.Echo "  " & path
Next

WScript.Echo "groups:"
For Each node In reader.FindNodes
  WScript.Echo "  " & node
Next

WScript.Echo "keys of WINDOW:"
For Each pair In reader.SplitBlock(reader.GetStructure("WINDOW", False))
  WScript.Echo "  " & pair.Key & " = " & pair.Value
Next
