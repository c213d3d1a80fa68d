' Stands before each of the scripts: their checks, and how they count failures. A script ends with its verdict.
On Error Resume Next
failures = 0

Sub Check(what, got, expected)
  If Err.Number <> 0 Then
    WScript.Echo "FAILED " & what & ": error " & Err.Number & ", " & Err.Description
    failures = failures + 1
    Err.Clear
  ElseIf got <> expected Then
    WScript.Echo "FAILED " & what & ": got " & got & ", expected " & expected
    failures = failures + 1
  End If
End Sub

' An empty description stands for any.
Sub CheckError(what, number, description)
  If Err.Number <> number Or (description <> "" And Err.Description <> description) Then
    WScript.Echo "FAILED " & what & ": error " & Err.Number & ", " & Err.Description
    failures = failures + 1
  End If
  Err.Clear
End Sub
