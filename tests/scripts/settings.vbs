' XML_Settings, ValueCollection and PathClass from VBScript.
' Pairs
Set values = CreateObject("Tornby.ValueCollection")
Set pair = values.Add("Width", "1")
Check "value", pair.Value, "1"
Check "default member", values("WIDTH"), "1"
Check "same object", values.Item(1) Is pair, True
Check "duplicate", values.Add("WIDTH", "2") Is Nothing, True
Check "missing", values.Item(7) Is Nothing, True
Check "exists", values.Exist("width"), True
values.Add "B", "2"
values.Add "C", "3"
values.Add "D", "4"
met = ""
For Each pair In values
  met = met & pair.Key
  If pair.Key = "Width" Then values.Remove 1
  If pair.Key = "B" Then values.Remove "C"
  If pair.Key = "D" And values.Count < 4 Then values.Add "E" & values.Count, ""
Next
Check "walk with changes", met, "WidthBDE2"
values.Sort 1
Check "count", values.Count, 3

' A document on a real file
Set files = CreateObject("Scripting.FileSystemObject")
name = files.GetSpecialFolder(2) & "\tornby_settings.txt"
If files.FileExists(name) Then files.DeleteFile name
Set settings = CreateObject("Tornby.XML_Settings")
settings.FileName = name
Check "new file", settings.GetContents, ""
settings.SaveSetting "Options", "Width", 640
Check "number as text", settings.GetSetting("options", "width", "none"), "640"
settings.SetContents ""
settings.SaveSetting "OPTIONS", "WIDTH", "640"
settings.SaveSetting "OPTIONS", "TITLE", "caf" & Chr(233)
settings.UpdateRecent "C:\a.txt"
settings.UpdateRecent "C:\b.txt"
settings.UpdateRecent "C:\a.txt"

Set again = CreateObject("Tornby.XML_Settings")
again.FileName = name
Check "title", again.GetSetting("OPTIONS", "TITLE", ""), "caf" & Chr(233)
recent = again.ExtractRecent
Check "recent files", UBound(recent), 1
Check "the newest", recent(0), "C:\a.txt"
Check "the next", recent(1), "C:\b.txt"
Check "progress", again.MaxElements, Len("<RECENTFILES></RECENTFILES><FILE></FILE><FILE></FILE>C:\a.txtC:\b.txt") + 6
Check "no such group", again.ExtractBlock("NONE") Is Nothing, True
Set items = again.ExtractBlock("OPTIONS")
Check "items", items.Count & items(1) & items.Item(2), "2640caf" & Chr(233)
met = ""
For Each item In again.FindNodes
  met = met & item
Next
Check "nodes", met, "<OPTIONS><RECENTFILES>"
value = again.FindNodes.Item(3)
CheckError "past the end", 9, ""
met = ""
For Each pair In again.SplitBlock(again.GetContents)
  met = met & pair.Key & "(" & Len(pair.Value) & ")"
Next
Check "blocks", met, "OPTIONS(43)RECENTFILES(48)"
again.SetContents "<x>1</x>"
Set items = again.ExtractBlock2("x", True)
CheckError "whole block at the start", 5, ""
block = "<G>x</G>"
Check "new block", again.AddNewValue("g", "k", "1", block), "<G>" & vbCrLf & "x<K>1</K>" & vbCrLf & "</G>"
Check "the block given", block, "x<K>1</K>"
files.DeleteFile name

' Folders
Set paths = CreateObject("Tornby.PathClass")
Check "Windows", LCase(paths.WindowsDir), LCase(files.GetSpecialFolder(0))
Check "program files", TypeName(paths.ProgramFiles), "Empty"
path = paths.Desktop & "\plan.txt"
Check "collapsed", paths.ProcessPath(path, False), "%DESKTOP%\plan.txt"
Check "the path given", path, "%DESKTOP%\plan.txt"
Check "expanded", paths.ProcessPath(path, True), paths.Desktop & "\plan.txt"
root = &H80000001
Check "registry", paths.RGGetKeyValue(root, "Software\Microsoft\Windows\CurrentVersion\Explorer\Shell Folders", "Desktop"), paths.Desktop

If failures = 0 Then WScript.Echo "passed"
WScript.Quit failures
