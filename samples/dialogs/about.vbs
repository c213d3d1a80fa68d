' Shows the about box of the library.
' Usage: cscript //nologo about.vbs
Set dialogs = CreateObject("Tornby.clsDIALOGS")
dialogs.flngShowAbout
