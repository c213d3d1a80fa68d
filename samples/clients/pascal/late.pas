{ A late-bound client in Object Pascal: classes and members by name only.
  Usage: late settings-file }
program late;

{$mode delphi}
{$apptype console}

uses
  SysUtils, Variants, ActiveX, ComObj, ComHelp;

procedure Run(const FileName: WideString);
var
  Crc, Sum, Api, Cipher, Settings, Recent, Groups, Web: OleVariant;
  Text, Digits: WideString;
  I: Integer;
begin
  Crc := CreateOleObject('Tornby.clsCRC');
  Crc.AddString('123456789');
  WriteLn('checksum of 123456789: ', IntToHex(Integer(Crc.Value), 8));

  Api := CreateOleObject('Tornby.clsApi');
  Text := Api.ApiReadFile(FileName);          { '': empty, or it cannot be read }
  Crc.Clear;
  WriteLn('file: ', Length(Text), ' characters, checksum ', IntToHex(Integer(Crc.AddString(Text)), 8));

  Sum := Crc.CalculateFile('C:\no such file');
  Write('missing file: ');
  if VarIsEmpty(Sum) then WriteLn('empty, or a 32-bit program on 64-bit Windows')
  else if VarType(Sum) = varSmallint then WriteLn('it cannot be read')
  else WriteLn(IntToHex(Integer(Sum), 8));

  Cipher := CreateOleObject('Tornby.clsEncryptXOR');
  Text := WideString('Z'#$00FC'rich, 3 '#$20AC);
  Cipher.Key := WideString('k'#$00E9'y');
  Digits := Cipher.HexEncrypt(Text);
  WriteLn('enciphered: ', Digits);
  if WideString(Cipher.HexDecrypt(Digits)) = Text then WriteLn('deciphered: the same text')
  else WriteLn('deciphered: another text');

  Settings := CreateOleObject('Tornby.XML_Settings');
  Settings.FileName := FileName;
  Recent := Settings.ExtractRecent;           { an array of variants }
  for I := VarArrayLowBound(Recent, 1) to VarArrayHighBound(Recent, 1) do
    WriteLn('recent file: ', string(Recent[I]));
  Groups := Settings.FindNodes;
  for I := 1 to Groups.Count do WriteLn('group: ', string(Groups.Item[I]));

  try
    Crc.AddString('');
  except
    on Error: EOleSysError do WriteLn('error ', NumberOf(Error), ': ', Error.Message);
  end;
  Web := CreateOleObject('Tornby.clsWebEncryption');
  try
    Web.bsDecodeString('A===');
  except
    on Error: EOleSysError do WriteLn('error ', NumberOf(Error), ': ', Error.Message);
  end;
end;

begin
  OleCheck(CoInitialize(nil));
  try
    Run(WideString(ParamStr(1)));
    ShowReleased;
  finally
    CoUninitialize;
  end;
end.
