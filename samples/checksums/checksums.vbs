' Prints the CRC-32 of each file named on the command line, and what the two algorithms make of the standard check text.
' Usage: cscript //nologo checksums.vbs file...
Option Explicit

Function Column(text, width)
  If Len(text) < width Then text = text & Space(width - Len(text))
  Column = text
End Function

Function RightColumn(text, width)
  If Len(text) < width Then text = Space(width - Len(text)) & text
  RightColumn = text
End Function

Function Hex8(number)
  Hex8 = Right("0000000" & Hex(number), 8)
End Function

Dim crc, files, i, argument, started, result, shown
Set crc = CreateObject("Tornby.clsCRC")
Set files = CreateObject("Scripting.FileSystemObject")

WScript.Echo "CRC-32 of ""123456789"": " & Hex8(crc.CalculateString("123456789"))
crc.Algorithm = 0
WScript.Echo "CRC-16 of ""123456789"": " & Right(Hex8(crc.CalculateString("123456789")), 4)
crc.Algorithm = 1
crc.AddString "1234"
crc.AddString "56789"
WScript.Echo "CRC-32 in two pieces:  " & Hex8(crc.Value)
WScript.Echo ""

WScript.Echo Column("file", 28) & RightColumn("bytes", 12) & "  " & Column("CRC-32", 10) & RightColumn("seconds", 8)
For i = 0 To WScript.Arguments.Count - 1
  argument = WScript.Arguments(i)
  started = Timer
  result = crc.CalculateFile(argument)
  Select Case TypeName(result)
    Case "Long" shown = Hex8(result)
    Case "Empty" shown = "(empty)"
    Case Else shown = "(failed)"
  End Select
  WScript.Echo Column(files.GetFileName(argument), 28) & RightColumn(files.GetFile(argument).Size, 12) & "  " & _
    Column(shown, 10) & RightColumn(FormatNumber(Timer - started, 3), 8)
Next
