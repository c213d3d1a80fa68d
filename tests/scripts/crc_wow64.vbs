' clsCRC in a 32-bit process on 64-bit Windows, where two members differ on purpose.
Set crc = CreateObject("Tornby.clsCRC")
Check "AddString", crc.AddString("123456789"), -873187034
crc.Algorithm = 0
crc.AddString "123456789"
Check "CalculateString", crc.CalculateString("123456789"), -771566985
Check "the register is untouched", crc.Value, 12739
Check "CalculateString of nothing", crc.CalculateString(""), -1
Check "CalculateFile of this script", TypeName(crc.CalculateFile(WScript.ScriptFullName)), "Empty"
Check "CalculateFile of a missing file", crc.CalculateFile("no such file"), -1

If failures = 0 Then WScript.Echo "passed"
WScript.Quit failures
