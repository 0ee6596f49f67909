' The toolbar control as a macro uses it: every member, and its errors. The script also knows `excel`,
' a workbook application with the toolbar's command bar, and `user`, who sits in front of the
' screen. Argument 1 is the address of an M7718C.
Option Explicit

Const SetupInterface = "{7C1F0C52-6F0E-4A1F-9A36-2F6D1A3B7A02}"
Const DebugContainer = "{7C1F0C52-6F0E-4A1F-9A36-2F6D1A3B7A03}"
Const ResourceClient = "{7C1F0C52-6F0E-4A1F-9A36-2F6D1A3B7A04}"
Const BarName = "TQL/KRV Signal Generator"

Dim control, buttons, other, setup
Set control = test.Create("CvnKRVControl.KRVControl")
Set buttons = excel.CommandBars.Item(BarName).Controls

Sub ExpectImageError(what)
    On Error Resume Next
    control.DoSaveScreenImage
    test.Equal what & ": number", Err.Number, &H80040005
    test.Equal what & ": source", Err.Source, "KRVControl::IToolbarSupport_DoSaveScreenImage"
    test.Equal what & ": description", Err.Description, "DataConnection Object Not Set"
    On Error GoTo 0
    test.Equal what & ": box", user.Answered, "Failed to transfer image to application." & vbCrLf & _
               "Error Description: " & vbCrLf & "DataConnection Object Not Set"
End Sub

' --- without a host
test.Equal "no host", control.ConnectedApplication Is Nothing, True
ExpectImageError "no host"
control.UpdateConnectedStatus
control.DoHelp
control.StartTransfer 1, "two"
control.StopTransfer Empty, 2.5
user.WillClose
control.DoAbout
control.DoSetup
user.Closed
user.Answered
user.WillClose
control.DoDataTransfer 0, 0
test.Equal "the download dialog", InStr(user.Closed, "Download") > 0, True

' --- calls that can't be
On Error Resume Next
control.NoSuchMember
test.Equal "a method that isn't there", Err.Number, 438
Err.Clear
control.StartTransfer 1
test.Equal "too few arguments", Err.Number, 450
Err.Clear
Set control.ConnectedApplication = "a text"
test.Equal "a text for an object", Err.Number <> 0, True
Err.Clear
On Error GoTo 0

' --- what no adapter takes
Set other = test.Create("CvnKRVControl.KRVControl")
Set control.ConnectedApplication = other
test.Equal "another control as the host", control.ConnectedApplication Is Nothing, True
Set control.ConnectedApplication = test
test.Equal "late bound only", control.ConnectedApplication Is Nothing, True
Set control.ConnectedApplication = Nothing
test.Equal "no object", control.ConnectedApplication Is Nothing, True
ExpectImageError "no adapter"

' --- with a host
Set control.ConnectedApplication = excel
test.Equal "the host", control.ConnectedApplication.Name, excel.Name
buttons.Item("PutData").Enabled = False
user.Answered
user.Places control
user.WillConnectTo test.Argument(1)
control.DoConnect
test.Equal "nothing to say", user.Answered, ""
test.Equal "PutData", buttons.Item("PutData").Enabled, True
test.Equal "Settings", buttons.Item("Settings").Enabled, True
test.Equal "Connect", buttons.Item("Connect").Visible, False
test.Equal "Connected", buttons.Item("Connected").TooltipText, _
           "Connected to M7718C Signal Generator at " & test.Argument(1)
buttons.Item("Connected").TooltipText = "changed"
control.UpdateConnectedStatus
test.Equal "updated", buttons.Item("Connected").TooltipText, _
           "Connected to M7718C Signal Generator at " & test.Argument(1)
Set control.ConnectedApplication = other
test.Equal "the adapter stays", buttons.Item("Connected").Visible, True
Set other = Nothing

' --- interfaces besides the one that scripts get
Set setup = test.Through(control, SetupInterface)
test.Equal "files of older software", setup.GetLegacyVantorFileInfo("a", "b") Is Nothing, True
test.Equal "category", test.Through(control, ResourceClient).CategoryId, _
           "{395BCE5B-69FC-441a-904F-1373971E4237}"
test.Equal "debugging", test.Through(control, DebugContainer) Is Nothing, False
test.Equal "Model", setup.Model, "M7718C"
test.Equal "Version", Len(setup.Version) > 0, True
setup.SetupValue = "no snapshot"
test.Equal "no snapshot", InStr(user.Answered, "State restore operation failed--state has not been restored."), 1
Set setup = test.Through(test.Create("CvnKRVControl.KRVControl"), SetupInterface)
On Error Resume Next
other = setup.Model
test.Equal "unconnected: number", Err.Number, &H80040005
test.Equal "unconnected: source", Err.Source, "InstrumentServer"
test.Equal "unconnected: description", Err.Description, _
           "No instrument is connected. Connect to an instrument first."
Err.Clear
other = setup.SetupValue
test.Equal "unconnected: number", Err.Number, &H80040005
Err.Clear
test.Equal "not a member of the toolbar's", control.Model, "none"
test.Equal "not a member of the toolbar's", Err.Number, 438
On Error GoTo 0
