' Lists the special folders, and shows a path with a token in place of its folder and back.
' Usage: cscript //nologo folders.vbs
Option Explicit

Dim paths, path, before

Sub Show(name, folder)
  WScript.Echo name & Space(18 - Len(name)) & folder
End Sub

Set paths = CreateObject("Tornby.PathClass")
Show "Desktop", paths.Desktop
Show "Personal", paths.Personal
Show "MyPictures", paths.MyPictures
Show "AppData", paths.AppData
Show "LocalAppData", paths.LocalAppData
Show "StartMenu", paths.StartMenu
Show "Programs", paths.Programs
Show "Startup", paths.Startup
Show "Recent", paths.Recent
Show "SendTo", paths.SendTo
Show "Favorites", paths.Favorites
Show "Templates", paths.Templates
Show "Fonts", paths.Fonts
Show "Cache", paths.Cache
Show "Cookies", paths.Cookies
Show "History", paths.History
Show "NetHood", paths.NetHood
Show "PrintHood", paths.PrintHood
Show "AddTools", paths.AddTools
Show "WindowsDir", paths.WindowsDir
Show "WindowsSysDir", paths.WindowsSysDir
WScript.Echo ""

path = paths.Desktop & "\plans\house.txt"
before = path
paths.ProcessPath path, False
Show "collapsed", path
paths.ProcessPath path, True
Show "expanded", path
If path = before Then WScript.Echo "the same path again"
