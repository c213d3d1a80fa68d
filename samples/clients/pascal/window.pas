{ A control of the DLL in a window, placed by the system's own host, with its events.
  Usage: window    click on the link; close the window to end }
program window;

{$mode delphi}
{$apptype console}

uses
  Windows, SysUtils, ActiveX, ComObj, ComHelp, Tornby_1_0_TLB;

function AtlAxWinInit: BOOL; stdcall; external 'atl.dll';
function AtlAxAttachControl(Control: IUnknown; Host: HWND; out Container: IUnknown): HRESULT; stdcall; external 'atl.dll';

type
  TForm = class
    Link: TEvskelHyperLabel;
    constructor Create(Parent: HWND);
    destructor Destroy; override;
    procedure Click(Sender: TObject);
    procedure MouseUp(Sender: TObject; var Button: Smallint);
  end;

constructor TForm.Create(Parent: HWND);
var
  Host: HWND;
  Container: IUnknown;
  Area: TRect;
begin
  Link := TEvskelHyperLabel.Create(nil);      { makes the control, and hears its events }
  OleCheck((Link.ComServer as IPersistStreamInit).InitNew);
  Host := CreateWindowW('AtlAxWin', nil, WS_CHILD or WS_VISIBLE, 20, 20, 240, 24, Parent, 0, 0, nil);
  OleCheck(AtlAxAttachControl(Link.ComServer, Host, Container));
  Link.ComServer.Caption := 'Open the manual';
  Link.ComServer.Alignment := alignTextCentre;
  Link.OnClick := Click;
  Link.OnMouseUp := MouseUp;
  GetClientRect(GetWindow(Host, GW_CHILD), Area);
  WriteLn('in place: ', Area.Right, ' pixels wide');
end;

destructor TForm.Destroy;
begin
  WriteLn('caption at the end: ', Link.ComServer.Caption);
  Link.Free;
  inherited;
end;

procedure TForm.Click(Sender: TObject);
begin
  WriteLn('event Click');
  Link.ComServer.Caption := 'Clicked';
end;

procedure TForm.MouseUp(Sender: TObject; var Button: Smallint);
begin
  WriteLn('event MouseUp: button ', Button);
end;

function WindowProcedure(Window: HWND; Message: UINT; First: WPARAM; Second: LPARAM): LRESULT; stdcall;
begin
  if Message = WM_DESTROY then PostQuitMessage(0);
  Result := DefWindowProcW(Window, Message, First, Second);
end;

procedure Run;
var
  Kind: WNDCLASSW;
  Window: HWND;
  Form: TForm;
  Message: TMsg;
begin
  FillChar(Kind, SizeOf(Kind), 0);
  Kind.lpfnWndProc := @WindowProcedure;
  Kind.hInstance := HInstance;
  Kind.hCursor := LoadCursor(0, IDC_ARROW);
  Kind.hbrBackground := COLOR_BTNFACE + 1;
  Kind.lpszClassName := 'TornbyClient';
  if RegisterClassW(Kind) = 0 then RaiseLastOSError;
  Window := CreateWindowW('TornbyClient', 'Tornby client', WS_OVERLAPPEDWINDOW, 100, 100, 320, 140, 0, 0, HInstance, nil);
  if Window = 0 then RaiseLastOSError;

  Form := TForm.Create(Window);
  try
    ShowWindow(Window, SW_SHOW);
    while GetMessageW(@Message, 0, 0, 0) do
    begin
      TranslateMessage(Message);
      DispatchMessageW(Message);
    end;
  finally
    Form.Free;
  end;
end;

begin
  OleCheck(OleInitialize(nil));
  if not AtlAxWinInit then raise Exception.Create('the system has no host for controls');
  Run;
  ShowReleased;
  OleUninitialize;
end.
