{ Runs the conformance table through the Pascal unit. bindings/conformance/cases.txt tells the form.

    conformance TABLE...
}
program conformance;

{$MODE DELPHI}

uses
  SysUtils, Classes, OrvActions;

type
  TColumns = array[0..9] of UnicodeString;

const
  KindNames: array[0..12] of UnicodeString = ('(none)', 'Boolean', 'Numeric32Bit', 'Numeric64Bit', 'NumericDouble',
    'String', 'DateTime', 'Guid', 'EventType', 'MediaChannel', 'Resource', 'Rect', 'ResultDataSet');

var
  CaseName: UnicodeString;
  Passed, Failed: Integer;
  CaseFailed: Boolean;
  Action: TOrvAction;
  Technical: UnicodeString;
  Fields: Cardinal;

procedure Expect(const AWhat, AExpected, AActual: UnicodeString);
begin
  if AExpected = AActual then
    Exit;
  WriteLn(UTF8Encode(CaseName + ': ' + AWhat));
  WriteLn(UTF8Encode('  expected ' + AExpected));
  WriteLn(UTF8Encode('  and got  ' + AActual));
  CaseFailed := True;
end;

function Text(const AForm: string; const AValues: array of const): UnicodeString;
begin
  Result := UnicodeString(Format(AForm, AValues));
end;

function Bytes(const ADigits: UnicodeString): TBytes;
var
  At: Integer;
begin
  Result := nil;
  SetLength(Result, Length(ADigits) div 2);
  for At := 0 to High(Result) do
    Result[At] := StrToInt('$' + string(Copy(ADigits, 2 * At + 1, 2)));
end;

function Digits(const ABytes: TBytes): UnicodeString;
var
  At: Integer;
begin
  Result := '';
  for At := 0 to High(ABytes) do
    Result := Result + UnicodeString(LowerCase(IntToHex(ABytes[At], 2)));
end;

function Read(const AText: UnicodeString): TOrvAction;
var
  Handle: TOrvHandle;
begin
  Handle := OrvAct_CreateFromTextBufferW(PWideChar(AText), ORV_LENGTH_TERMINATED, ORV_EXPECT_ANY, 0, nil);
  if Handle = nil then
    Exit(nil);
  Result := TOrvAction.FromHandle(Handle);
end;

{ Values }

function GuidText(const AGuid: TGUID): UnicodeString;
begin
  Result := UnicodeString(LowerCase(Copy(GUIDToString(AGuid), 2, 36)));
end;

function RectText(AValue: Int64): UnicodeString;
begin
  Result := Text('%d,%d,%d,%d', [SmallInt(AValue), SmallInt(AValue shr 16), SmallInt(AValue shr 32),
    SmallInt(AValue shr 48)]);
end;

function DataText(const AName: UnicodeString): UnicodeString;
var
  Items: POrvResultDataItem;
  Count: UInt64;
begin
  Result := '';
  ITalvecAction(Action.Handle).GetResultDataSet(PWideChar(AName), @Items, @Count);
  while Count > 0 do
  begin
    if Result <> '' then
      Result := Result + ', ';
    Result := Result + Text('%d %d %d %d %d ''', [Items^.field0, Items^.field1, Items^.field2, Items^.field3,
      Items^.field4]) + UnicodeString(Items^.name) + '''';
    Inc(Items);
    Dec(Count);
  end;
end;

function Shown(const AName: UnicodeString): UnicodeString;
var
  Id: UInt64;
  Number: Cardinal;
  Name: UnicodeString;
  Guid: TGUID;
  Real: Double;
begin
  Result := '';
  case Action.KindOf(AName) of
    ORV_KIND_Boolean: Result := Text('%d', [Ord(Action.AsBoolean[AName])]);
    ORV_KIND_Numeric32Bit: Result := Text('%d', [Action.AsInt32[AName]]);
    ORV_KIND_Numeric64Bit: Result := Text('%d', [Action.AsInt64[AName]]);
    ORV_KIND_NumericDouble:
      begin
        Real := Action.AsDouble[AName];
        Result := UnicodeString(LowerCase(IntToHex(PInt64(@Real)^, 16)));
      end;
    ORV_KIND_String: Result := Action.AsText[AName];
    ORV_KIND_DateTime: Result := Text('%u', [QWord(Action.AsDate[AName].value)]);
    ORV_KIND_Guid: Result := GuidText(Action.AsGuid[AName]);
    ORV_KIND_EventType:
      if Action.GetEventType(AName, Id, Name) then
        Result := Text('%u|', [Id]) + Name;
    ORV_KIND_MediaChannel:
      if Action.GetChannel(AName, Id, Number, Name) then
        Result := Text('%u|%u|', [Id, Number]) + Name;
    ORV_KIND_Resource:
      if Action.GetResource(AName, Guid, Name) then
        Result := GuidText(Guid) + '|' + Name;
    ORV_KIND_Rect: Result := RectText(Action.AsRect[AName]);
    ORV_KIND_ResultDataSet: Result := DataText(AName);
  end;
end;

{ The record of the flat interface, whose payload is a union, tells the same numbers as the class. }
procedure CheckRecord(const AName: UnicodeString);
var
  Value: TOrvParameterValue;
begin
  FillChar(Value, SizeOf(Value), 0);
  Talvec_Action_GetParameterByName(Action.Handle, PWideChar(AName), @Value);
  Expect(AName + ' kind', KindNames[Action.KindOf(AName)], KindNames[Value.kind]);
  case Value.kind of
    ORV_KIND_Numeric32Bit: Expect(AName, Shown(AName), Text('%d', [Value.payload.AsInt32]));
    ORV_KIND_MediaChannel:
      Expect(AName, Shown(AName), Text('%u|%u|', [Value.payload.AsChannel.id, Value.payload.AsChannel.number])
        + UnicodeString(Value.payload.AsChannel.name));
    ORV_KIND_String: Expect(AName, Shown(AName), UnicodeString(Value.text));
  end;
  SysFreeString(Value.text);
end;

{ The class layer gives each value in its own way; taking an action apart and putting it together again keeps it. }
procedure CopyField(const AName: UnicodeString; ATo: TOrvAction);
var
  Id: UInt64;
  Number: Cardinal;
  Name: UnicodeString;
  Guid: TGUID;
  Items: POrvResultDataItem;
  Count: UInt64;
begin
  case Action.KindOf(AName) of
    ORV_KIND_Boolean: ATo.AsBoolean[AName] := Action.AsBoolean[AName];
    ORV_KIND_Numeric32Bit: ATo.SetEnum(AName, Action.AsInt32[AName], Action.EnumOf(AName));
    ORV_KIND_Numeric64Bit: ATo.AsInt64[AName] := Action.AsInt64[AName];
    ORV_KIND_NumericDouble: ATo.AsDouble[AName] := Action.AsDouble[AName];
    ORV_KIND_String: ATo.AsText[AName] := Action.AsText[AName];
    ORV_KIND_DateTime: ATo.AsDate[AName] := Action.AsDate[AName];
    ORV_KIND_Guid: ATo.AsGuid[AName] := Action.AsGuid[AName];
    ORV_KIND_EventType:
      if Action.GetEventType(AName, Id, Name) then
        ATo.SetEventType(AName, Id, Name);
    ORV_KIND_MediaChannel:
      if Action.GetChannel(AName, Id, Number, Name) then
        ATo.SetChannel(AName, Number, Name, Id);
    ORV_KIND_Resource:
      if Action.GetResource(AName, Guid, Name) then
        ATo.SetResource(AName, Guid, Name);
    ORV_KIND_Rect: ATo.AsRect[AName] := Action.AsRect[AName];
    ORV_KIND_ResultDataSet:
      begin
        ITalvecAction(Action.Handle).GetResultDataSet(PWideChar(AName), @Items, @Count);
        ITalvecAction(ATo.Handle).SetResultDataSet(PWideChar(AName), Items, Count);
      end;
  end;
end;

type
  { An interface that the library calls. }
  TCopier = class(TInterfacedObject, ITalvecParameterEnumerator)
  private
    FTarget: TOrvAction;
  public
    procedure OnParameter(AName: PWideChar; AKind, AEnumType: Cardinal); cdecl;
  end;

procedure TCopier.OnParameter(AName: PWideChar; AKind, AEnumType: Cardinal);
begin
  Expect(UnicodeString(AName) + ' kind', KindNames[AKind], KindNames[Action.KindOf(AName)]);
  CopyField(UnicodeString(AName), FTarget);
end;

procedure CheckCopy;
var
  Copier: TCopier;
  Holder: ITalvecParameterEnumerator;
  Copy: TOrvAction;
begin
  if ITalvecMessage(Action.Handle).GetMessageKind = ORV_MESSAGE_MATCH_ACTION then
    Exit;
  Copy := TOrvAction.Create(Action.Name);
  try
    Copier := TCopier.Create;
    Holder := Copier;
    Copier.FTarget := Copy;
    ITalvecAction(Action.Handle).EnumerateParameters(Holder);
    if not Action.SameAs(Copy) then
      Expect('copied by fields', Action.ToText, Copy.ToText);
  finally
    Copy.Free;
  end;
end;

{ Failures }

function ErrorText: UnicodeString;
var
  Info: TOrvLastErrorInfo;
begin
  if OrvAct_GetLastError(@Info) then
    Result := Text('%u'#9'%u'#9, [Info.code, Info.subCode]) + UnicodeString(Info.messageW)
  else
    Result := '-'#9'-'#9'-';
end;

function CallOn(AAction: TOrvHandle; const ACall: UnicodeString; ANumber: Cardinal;
  var ASecond: UnicodeString): Boolean;
var
  Channel: TOrvChannelValue;
  Event: TOrvEventData;
  Room: array[0..255] of WideChar;
  Size: Cardinal;
begin
  FillChar(Channel, SizeOf(Channel), 0);
  FillChar(Event, SizeOf(Event), 0);
  Event.size := ANumber;
  if ACall = 'role' then
    Result := OrvAct_SetVideoOutput(AAction, @Channel)
  else if ACall = 'decode' then
    Result := OrvAct_DecodeABCDisconnect(AAction)
  else if ACall = 'record' then
    Result := OrvAct_GetActionEventData(AAction, @Event, nil)
  else
  begin
    Result := OrvAct_StoreToTextBufferW(AAction, @Room, ANumber, False, 0, @Size);
    ASecond := Text('%u', [Size]);
  end;
end;

procedure CheckFailure(const AColumns: TColumns);
var
  Made: TOrvHandle;
  Done: Boolean;
  Second: UnicodeString;
  Given: TBytes;
  Consumed: Cardinal;
  Owner: TOrvAction;
  Answer: UnicodeString;
begin
  Made := nil;
  Owner := nil;
  Second := '-';
  if AColumns[1] = 'parse' then
  begin
    Made := OrvAct_CreateFromTextBufferW(PWideChar(AColumns[2]), ORV_LENGTH_TERMINATED, ORV_EXPECT_ANY, 0, nil);
    Done := Made <> nil;
  end
  else if AColumns[1] = 'bytes' then
  begin
    Given := Bytes(AColumns[2]);
    Made := OrvAct_CreateFromBinBuffer(Pointer(Given), Length(Given), StrToInt(string(AColumns[3])), @Consumed);
    Second := Text('%u', [Consumed]);
    Done := Made <> nil;
  end
  else if AColumns[1] = 'from-sibling' then
    Done := Talvec_Action_ConvertHeskActionTextToOrvActionText(PWideChar(AColumns[2]), nil)
  else if AColumns[1] = 'to-sibling' then
    Done := Talvec_Action_ConvertOrvActionTextToHeskActionText(PWideChar(AColumns[2]), nil)
  else
  begin
    Owner := Read(AColumns[2]);
    Done := CallOn(Owner.Handle, AColumns[1], StrToInt(string(AColumns[3])), Second);
  end;
  if Done then
    Answer := 'true'
  else
    Answer := 'false';
  Expect(AColumns[1], AColumns[4] + #9 + AColumns[5] + #9 + AColumns[6] + #9 + AColumns[7] + #9 + AColumns[8],
    Answer + #9 + Second + #9 + ErrorText);
  Owner.Free;
  OrvAct_CloseHandle(Made);
end;

{ The class layer raises what the call failed with. }
procedure CheckRaised;
begin
  try
    TOrvAction.Parse('A (x: "2026/13/15 03:10:43,123 GMT+01:00")').Free;
    Expect('raised', 'EOrvError', 'nothing');
  except
    on Error: EOrvError do
      Expect('raised', '4/5 Ulmo::EUlmoDateTime', Text('%u/%u %s', [Error.Code, Error.SubCode, Error.ErrorClass]));
  end;
end;

{ The table }

procedure CheckBytes(const ADigits: UnicodeString);
var
  Again: TOrvAction;
begin
  Expect('hex', ADigits, Digits(Action.ToBytes));
  Again := TOrvAction.FromBytes(Bytes(ADigits));
  try
    Expect('read from bytes', Technical, Again.ToText);
    if not Again.SameAs(Action) then
      Expect('equal', 'yes', 'no');
  finally
    Again.Free;
  end;
end;

procedure EndCase;
begin
  if CaseName = '' then
    Exit;
  if Action <> nil then
  begin
    Expect('technical', Technical, Action.ToText);
    Expect('number of parameters', Text('%u', [Fields]), Text('%u', [Action.Count]));
    CheckCopy;
  end;
  FreeAndNil(Action);
  if CaseFailed then
    Inc(Failed)
  else
    Inc(Passed);
  CaseFailed := False;
  Fields := 0;
end;

procedure CheckField(const AColumns: TColumns);
begin
  Inc(Fields);
  if not Action.Has(AColumns[1]) then
  begin
    Expect(AColumns[1], AColumns[4], '(absent)');
    Exit;
  end;
  Expect(AColumns[1] + ' kind', AColumns[2] + ' ' + AColumns[3],
    KindNames[Action.KindOf(AColumns[1])] + Text(' %u', [Action.EnumOf(AColumns[1])]));
  Expect(AColumns[1], AColumns[4], Shown(AColumns[1]));
  CheckRecord(AColumns[1]);
end;

procedure Take(const AColumns: TColumns);
begin
  if AColumns[0] = 'case' then
  begin
    EndCase;
    CaseName := AColumns[1];
  end
  else if AColumns[0] = 'text' then
  begin
    Action := Read(AColumns[1]);
    Technical := AColumns[1];
    if Action = nil then
      Expect('text', 'an action', 'nothing');
  end
  else if AColumns[0] = 'technical' then
    Technical := AColumns[1]
  else if AColumns[0] = 'fail' then
    CheckFailure(AColumns)
  else if Action = nil then
    Exit
  else if AColumns[0] = 'plain' then
    Expect('plain', AColumns[1], Action.ToPlain)
  else if AColumns[0] = 'json' then
    Expect('json', AColumns[1], Action.ToJson)
  else if AColumns[0] = 'hex' then
    CheckBytes(AColumns[1])
  else if AColumns[0] = 'field' then
    CheckField(AColumns);
end;

procedure TakeTable(const APath: string);
var
  Lines: TStringList;
  Line, At: Integer;
  Rest: UnicodeString;
  Columns: TColumns;
begin
  Lines := TStringList.Create;
  try
    Lines.LoadFromFile(APath);
    for Line := 0 to Lines.Count - 1 do
    begin
      Rest := UTF8Decode(Lines[Line]);
      if (Rest = '') or (Rest[1] = '#') then
        Continue;
      Rest := Rest + #9;
      for At := 0 to High(Columns) do
      begin
        Columns[At] := Copy(Rest, 1, Pos(UnicodeString(#9), Rest) - 1);
        Delete(Rest, 1, Pos(UnicodeString(#9), Rest));
      end;
      Take(Columns);
    end;
    EndCase;
    CaseName := '';
  finally
    Lines.Free;
  end;
end;

var
  At: Integer;
begin
  for At := 1 to ParamCount do
    TakeTable(ParamStr(At));
  CaseName := 'exceptions';
  CheckRaised;
  EndCase;
  WriteLn(Passed, ' passed, ', Failed, ' failed');
  if OrvAct_GetNumberOfOpenHandles <> 0 then
    WriteLn(OrvAct_GetNumberOfOpenHandles, ' objects are still open');
  if (Failed > 0) or (Passed < 2) or (OrvAct_GetNumberOfOpenHandles <> 0) then
    Halt(1);
end.
