{ What clients of automation objects need beyond the units ComObj and ActiveX. }
unit ComHelp;

{$mode delphi}

interface

uses
  Windows, ComObj;

{ The number of an error as scripts know it: 9, not $800A0009. }
function NumberOf(const Error: EOleSysError): Integer;

{ Says whether every object of the DLL has been let go of: a check while you write. }
procedure ShowReleased;

implementation

function NumberOf(const Error: EOleSysError): Integer;
begin
  Result := Error.ErrorCode;
  if (Result and Integer($FFFF0000)) = Integer($800A0000) then Result := Result and $FFFF;
end;

procedure ShowReleased;
var
  CanUnload: function: HRESULT; stdcall;
begin
  CanUnload := GetProcAddress(GetModuleHandle('tornby.dll'), 'DllCanUnloadNow');
  if Assigned(CanUnload) and (CanUnload() = S_OK) then WriteLn('all released')
  else WriteLn('NOT all released');
end;

end.
