' clsDIALOGS from VBScript: what needs no dialog on the screen. Nothing is remembered, so that no file is left.
Set dialogs = CreateObject("Tornby.clsDIALOGS")
Check "persistence", dialogs.blnUsePersistence, True
dialogs.blnUsePersistence = False
Check "no persistence", dialogs.blnUsePersistence, False
Check "messages", TypeName(dialogs.blnShowErrorMessages), "Boolean"
Check "paper", dialogs.lngPaperWidth & " " & dialogs.lngPaperHeight, "8500 11000"
Check "margin", dialogs.intLeftMargin, 500
Check "its type", TypeName(dialogs.intLeftMargin), "Integer"
dialogs.intTopMargin = "1250"
Check "margin written", dialogs.intTopMargin, 1250
dialogs.intTopMargin = 40000
CheckError "margin too large", 6, ""
Check "type of a code", TypeName(dialogs.lngDialogError), "Long"
Check "error text", dialogs.strDialogError, "N/A"
dialogs.strTitle = "Pick one"
Check "title", dialogs.strTitle, "Pick one"
dialogs.strFilter = "Text (*.txt)|*.txt|All files|*.*"
Check "entry", dialogs.fstrReturnSingleFileName(255), ""
unused = dialogs.fstrReturnSingleFileName(256)
CheckError "no such entry", 9, ""
dialogs.lngColor = &HFF
Check "colour", dialogs.lngColor, 255
Set label = CreateObject("Tornby.kelLabel")
Check "a system colour", label.BackColor, &H8000000F
Check "its type", TypeName(label.BackColor), "Long"
dialogs.lngColor = label.BackColor
Check "passed on", dialogs.lngColor, &H8000000F
label.ForeColor = 2147483653 ' &H80000005 as it comes from languages with larger numbers
dialogs.lngColor = 2147483653
Check "both signs", label.ForeColor - dialogs.lngColor, 0
dialogs.lngColor = "&H80000010"
Check "as text", dialogs.lngColor, &H80000010
label.ForeColor = 4294967296
CheckError "no colour", 6, ""
label.ForeColor = Null
CheckError "no number", 13, ""

' Without room for a name the system refuses it, and with no message shown nobody has to answer.
dialogs.blnShowErrorMessages = False
dialogs.lngMaxFileNameBuffer = -1
Check "a negative length", dialogs.strGetOpenFileName(""), ""
Check "no dialog error", dialogs.strDialogError, "N/A"
' An owner window that does not exist ends a dialog at once, as if cancelled.
dialogs.lngMaxFileNameBuffer = 250
dialogs.lngHWnd = 1
Check "owner", dialogs.lngHWnd, 1
Check "cancelled", dialogs.strGetOpenFileName("") & dialogs.strGetSaveFileName(""), ""
Check "its text", dialogs.strDialogError, "General Codes Failure"
Check "font", dialogs.blnChooseFont, False
Check "folder", dialogs.fstrBrowseForFolder(1), ""

If failures = 0 Then WScript.Echo "passed"
WScript.Quit failures
