' clsCRC from VBScript: values, exact types, errors.
Set crc = CreateObject("Tornby.clsCRC")
Check "new object", crc.Algorithm, 1
Check "CRC-32", crc.AddString("123456789"), -873187034
Check "its type", TypeName(crc.Value), "Long"
Check "the type of Algorithm", TypeName(crc.Algorithm), "Long"

Check "register", Not crc.WIN64_AddCrc32("123456789", -1), -873187034

crc.Algorithm = 0
Check "CRC-16", crc.AddString("123456789"), 12739
Check "its type", TypeName(crc.Value), "Long"
crc.Algorithm = "1"
Check "in pieces", crc.AddString("1234") & crc.AddString("56789"), crc.CalculateString("1234") & -873187034
crc.Value = 5
Check "inverted", crc.Value, -6
crc.Value = 2.5
Check "rounded", crc.Value, -3

crc.Algorithm = 7
Check "unknown algorithm", TypeName(crc.Value), "Empty"
Check "unknown algorithm, adding", TypeName(crc.AddString("x")), "Empty"
crc.Algorithm = 1

result = crc.AddString("")
CheckError "empty text", 9, "Subscript out of range"
result = crc.CalculateString("")
CheckError "empty text", 9, "Subscript out of range"
crc.Value = "no number"
CheckError "a word for a number", 13, "Type mismatch"
crc.Value = Null
CheckError "Null", 94, "Invalid use of Null"
crc.Value = 3000000000
CheckError "too large", 6, "Overflow"
result = crc.AddString(Array(1, 2))
CheckError "an array for a string", 13, "Type mismatch"
Check "still usable", crc.CalculateString("123456789"), -873187034

Set files = CreateObject("Scripting.FileSystemObject")
folder = files.GetSpecialFolder(2) & "\"
Set file = files.CreateTextFile(folder & "tornby_digits.txt", True)
file.Write "123456789"
file.Close
Set file = files.CreateTextFile(folder & "tornby_empty.txt", True)
file.Close
Check "a file", crc.CalculateFile(folder & "tornby_digits.txt"), -873187034
Check "its type", TypeName(crc.CalculateFile(folder & "tornby_digits.txt")), "Long"
Check "an empty file", TypeName(crc.CalculateFile(folder & "tornby_empty.txt")), "Empty"
Check "a missing file", crc.CalculateFile(folder & "tornby_none.txt"), -1
Check "its type", TypeName(crc.CalculateFile(folder & "tornby_none.txt")), "Integer"
Check "a folder", TypeName(crc.CalculateFile(folder)), "Integer"
files.DeleteFile folder & "tornby_digits.txt"
files.DeleteFile folder & "tornby_empty.txt"

If failures = 0 Then WScript.Echo "passed"
WScript.Quit failures
