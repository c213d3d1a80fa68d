; Runs a command without the rights of an administrator, and ends with its status. Usage: limited.exe command
Unicode true
OutFile "${OUT}"
RequestExecutionLevel user
SilentInstall silent
!include FileFunc.nsh
!include LogicLib.nsh

Section
  ${GetParameters} $R0
  System::Call 'advapi32::OpenProcessToken(p -1, i 0xF01FF, *p .r1)'
  System::Call 'advapi32::CreateWellKnownSid(i 26, p 0, @ r2, *i 68)'  ; the administrators
  System::Call '*(p r2, i 0) p .r3'
  System::Call 'advapi32::CreateRestrictedToken(p r1, i 0, i 1, p r3, i 0, p 0, i 0, p 0, *p .r4) i .r0'
  ${If} $0 <> 0
    System::Call '*(i 68, i, i, i, i, i, i, i, i, i, i, i, i, i, i, i, i) p .r5'
    System::Call '*(p, p, i, i) p .r6'
    System::Call 'advapi32::CreateProcessAsUserW(p r4, p 0, w R0, p 0, p 0, i 0, i 0, p 0, p 0, p r5, p r6) i .r0'
  ${EndIf}
  ${If} $0 = 0
    SetErrorLevel 99
    Quit
  ${EndIf}
  System::Call '*$6(p .r7)'
  System::Call 'kernel32::WaitForSingleObject(p r7, i -1)'
  System::Call 'kernel32::GetExitCodeProcess(p r7, *i .r8)'
  SetErrorLevel $8
SectionEnd
