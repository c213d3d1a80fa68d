{ Makes the unit of a type library, Tornby_1_0_TLB.pas of that in the DLL.
  Usage: import_unit library folder }
program import_unit;

{$mode objfpc}{$H+}

uses
  Classes, SysUtils, ActiveX, ComObj, TypeLib;

var
  Name, Package, PackageUnit: string;
  Needed: TStringList;
  Text: TStringStream;
begin
  OleCheck(CoInitialize(nil));
  Needed := TStringList.Create;
  Text := TStringStream.Create(ImportTypelib(WideString(ParamStr(1)), Name, Needed, False, False, True, Package, PackageUnit));
  try
    Text.SaveToFile(IncludeTrailingPathDelimiter(ParamStr(2)) + ChangeFileExt(Name, '') + '.pas');
  finally
    Text.Free;
    Needed.Free;
  end;
  CoUninitialize;
end.
