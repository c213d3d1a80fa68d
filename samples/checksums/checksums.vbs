' Prints the CRC-32 of each file named on the command line, and what the two algorithms make of the standard check text.
' AddString and Value are the same in every program. CalculateFile is shortest, but gives nothing in a 32-bit program on
' 64-bit Windows, so whatever it gives has to be looked at.
' Usage: cscript //nologo checksums.vbs file...    (on 64-bit Windows the 32-bit script host is syswow64\cscript.exe)
Option Explicit

Dim api, crc, files, i, name, size, started, sum
Set api = CreateObject("Tornby.clsApi")
Set crc = CreateObject("Tornby.clsCRC")
Set files = CreateObject("Scripting.FileSystemObject")

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

' The CRC-32 of any file, where the ANSI code page has one byte a character.
Function ChecksumOf(name, size)
  Dim text
  text = api.ApiReadFile(name)
  If text = "" Then
    ChecksumOf = "(failed)"
    If size = 0 Then ChecksumOf = "(empty)"
  Else
    crc.Clear
    crc.AddString text
    ChecksumOf = Hex8(crc.Value)
  End If
End Function

' What CalculateFile gives, in words.
Function Calculated(name, size)
  Dim result
  result = crc.CalculateFile(name)
  Select Case TypeName(result)
    Case "Long" Calculated = Hex8(result)
    Case "Empty"
      If size = 0 Then
        Calculated = "(empty)"
      Else
        Calculated = "(none here)"   ' a 32-bit program on 64-bit Windows
      End If
    Case Else Calculated = "(failed)"   ' -1
  End Select
End Function

crc.AddString "123456789"
WScript.Echo "CRC-32 of ""123456789"": " & Hex8(crc.Value)
crc.Algorithm = 0
crc.AddString "123456789"
WScript.Echo "CRC-16 of ""123456789"": " & Right(Hex8(crc.Value), 4)
crc.Algorithm = 1
crc.AddString "1234"
crc.AddString "56789"
WScript.Echo "CRC-32 in two pieces:  " & Hex8(crc.Value)
WScript.Echo ""

WScript.Echo Column("file", 24) & RightColumn("bytes", 12) & "  " & Column("CRC-32", 10) & RightColumn("seconds", 8) & _
  "  CalculateFile"
For i = 0 To WScript.Arguments.Count - 1
  name = WScript.Arguments(i)
  If files.FileExists(name) Then
    size = files.GetFile(name).Size
    started = Timer
    sum = ChecksumOf(name, size)
    WScript.Echo Column(files.GetFileName(name), 24) & RightColumn(size, 12) & "  " & Column(sum, 10) & _
      RightColumn(FormatNumber(Timer - started, 3), 8) & "  " & Calculated(name, size)
  Else
    WScript.Echo Column(files.GetFileName(name), 24) & "  no such file"
  End If
Next
