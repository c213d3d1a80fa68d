{ An early-bound client in Object Pascal, through the unit that the importer of type libraries makes, with the events of
  an object.
  Usage: early settings-file }
program early;

{$mode delphi}
{$apptype console}

uses
  SysUtils, Variants, ActiveX, ComObj, ComHelp, Tornby_1_0_TLB;

procedure Checksums(const FileName: WideString);
var
  Crc: IclsCRC;
  Sum: OleVariant;
  Text: WideString;
begin
  Crc := CoclsCRC.Create;
  Crc.AddString('123456789');
  WriteLn('checksum of 123456789: ', IntToHex(Integer(Crc.Value), 8));
  Text := CoclsApi.Create.ApiReadFile(FileName);  { '': empty, or it cannot be read }
  Crc.Clear;
  WriteLn('file: ', Length(Text), ' characters, checksum ', IntToHex(Integer(Crc.AddString(Text)), 8));

  Sum := Crc.CalculateFile('C:\no such file');
  Write('missing file: ');
  if VarIsEmpty(Sum) then WriteLn('empty, or a 32-bit program on 64-bit Windows')
  else if VarType(Sum) = varSmallint then WriteLn('it cannot be read')
  else WriteLn(IntToHex(Integer(Sum), 8));
end;

procedure Ciphers;
var
  Cipher: IclsEncryptXOR;
  Text, Digits: WideString;
begin
  Cipher := CoclsEncryptXOR.Create;
  Text := WideString('Z'#$00FC'rich, 3 '#$20AC);
  Cipher.Key := WideString('k'#$00E9'y');
  Digits := Cipher.HexEncrypt(Text);
  WriteLn('enciphered: ', Digits);
  if Cipher.HexDecrypt(Digits) = Text then WriteLn('deciphered: the same text')
  else WriteLn('deciphered: another text');
end;

procedure SettingsOf(const FileName: WideString);
var
  Settings: IXML_Settings;
  Recent: PSafeArray;
  Paths: PPWideChar;
  Groups: IStringCollection;
  I: Integer;
begin
  Settings := CoXML_Settings.Create;
  Settings.FileName := FileName;
  Recent := Settings.ExtractRecent;           { an array of strings, which the caller destroys }
  try
    OleCheck(SafeArrayAccessData(Recent, Paths));
    for I := 0 to Recent^.rgsabound[0].cElements - 1 do WriteLn('recent file: ', WideString(Paths[I]));
    SafeArrayUnaccessData(Recent);
  finally
    SafeArrayDestroy(Recent);
  end;
  Groups := Settings.FindNodes;
  for I := 1 to Groups.Count do WriteLn('group: ', Groups.Item[I]);
end;

procedure Errors;
begin
  try
    CoclsCRC.Create.AddString('');
  except
    on Error: EOleSysError do WriteLn('error ', NumberOf(Error), ': ', Error.Message);
  end;
  try
    CoclsWebEncryption.Create.bsDecodeString('A===');
  except
    on Error: EOleSysError do WriteLn('error ', NumberOf(Error), ': ', Error.Message);
  end;
end;

type
  { The importer gives each class that has events a component: it makes the object, and hears it. }
  TCounter = class
    Steps: Integer;
    procedure Maximum(Sender: TObject; var Figure: Integer);
    procedure Step(Sender: TObject; var Position: Integer);
  end;

procedure TCounter.Maximum(Sender: TObject; var Figure: Integer);
begin
  WriteLn('event ProgressMax: ', Figure);
end;

procedure TCounter.Step(Sender: TObject; var Position: Integer);
begin
  Inc(Steps);
end;

procedure EventsOf(const FileName: WideString);
var
  Counter: TCounter;
  Settings: TEvsXML_Settings;
begin
  Counter := TCounter.Create;
  Settings := TEvsXML_Settings.Create(nil);
  try
    Settings.OnProgressMax := Counter.Maximum;
    Settings.OnProgressCurrent := Counter.Step;
    Settings.ComServer.FileName := FileName;
    Settings.ComServer.ExtractBlock('RECENTFILES');
    WriteLn('events ProgressCurrent: ', Counter.Steps);
  finally
    Settings.Free;
    Counter.Free;
  end;
end;

procedure Run(const FileName: WideString);
begin
  Checksums(FileName);
  Ciphers;
  SettingsOf(FileName);
  Errors;
  EventsOf(FileName);
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
