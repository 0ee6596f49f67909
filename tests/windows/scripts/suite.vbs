' The suite's components as a macro uses them: every member, and their errors. Argument 1 is the
' address of an M7718C, argument 2 where nothing answers, argument 3 a folder.
Option Explicit

Const NotConnected = "No instrument is connected. Connect to an instrument first."

Dim server, instrument, arb, options, discovery, settings, item, names, message, codes, number
Set server = test.Create("CvnKRVServer.CvnKRVServer")
Set instrument = server.Instrument
Set arb = server.Arb
Set options = server.Options

Sub ExpectError(what, number, source, description)
    test.Equal what & ": number", Err.Number, number
    test.Equal what & ": source", Err.Source, source
    test.Equal what & ": description", Err.Description, description
    Err.Clear
End Sub

' --- unconnected
test.Equal "session", instrument.IO Is Nothing, True
names = ""
For Each item In server.SupportedModels
    names = names & item & " "
Next
test.Equal "supported models", names, "M7718C M9920C M9920D M771XB M771XD KRV-B "
On Error Resume Next
item = server.Model
ExpectError "Model", &H80040005, "InstrumentServer", NotConnected
item = options.ArbInstalled
ExpectError "ArbInstalled", &H80040005, "InstrumentServer", NotConnected
item = arb.HasDualArbOption
ExpectError "HasDualArbOption", &H80040005, "InstrumentServer", NotConnected
item = instrument.CaptureState
ExpectError "CaptureState", &H80040005, "InstrumentServer", NotConnected
instrument.RestoreState "no state"
test.Equal "RestoreState", Err.Number <> 0, True
Err.Clear
item = server.NoSuchMember
test.Equal "a member that isn't there", Err.Number, 438
Err.Clear
On Error GoTo 0

' --- settings
Set settings = test.Create("CvnDiscovery.IOSettings")
settings.InstrumentType = "Signal Generator"
test.Equal "InstrumentType", settings.InstrumentType, "Signal Generator"
test.Equal "HostName", settings.HostName, "My Computer"
settings.HostName = "bench7"
test.Equal "HostName", settings.HostName, "bench7"
settings.HostName = "My Computer"
For Each item In server.SupportedModels
    settings.SupportedInstruments.Add item, item
Next
test.Equal "Count", settings.SupportedInstruments.Count, 6
test.Equal "by number", settings.SupportedInstruments.Item(2), "M9920C"
test.Equal "by key", settings.SupportedInstruments("m9920d"), "M9920D"
settings.SupportedInstruments.Remove "M7718C"
names = ""
For Each item In settings.SupportedInstruments
    names = names & item & " "
Next
test.Equal "those that are left", names, "M9920C M9920D M771XB M771XD KRV-B "
On Error Resume Next
settings.SupportedInstruments.Add "again", "M9920C"
ExpectError "a key that is taken", 457, "CvnDiscovery.IOSettings", _
            "This key is already associated with an element of this collection"
item = settings.SupportedInstruments.Item("nobody")
ExpectError "no such key", 5, "CvnDiscovery.IOSettings", "Invalid procedure call or argument"
item = settings.SupportedInstruments.Item(99)
ExpectError "no such number", 9, "CvnDiscovery.IOSettings", "Subscript out of range"
item = settings.SupportedInstruments.Item(0)
ExpectError "no such number", 9, "CvnDiscovery.IOSettings", "Subscript out of range"
settings.SupportedInstruments.Add "x", 4
ExpectError "a number for a key", 13, "CvnDiscovery.IOSettings", "Type mismatch"
On Error GoTo 0
settings.SupportedInstruments.Add "no key"
settings.SupportedInstruments.Add "no key either"
test.Equal "without a key", settings.SupportedInstruments.Item(7), "no key either"
settings.SupportedInstruments.Remove 7
settings.SupportedInstruments.Remove 6

Set item = test.Create("CvnRS232.RS232Config")
test.Equal "baud rate", item.BaudRate, 9600
item.Port = 2
item.BaudRate = 19200
item.DataBits = 7
item.Handshake = 3
test.Equal "serial settings", item.Port & " " & item.BaudRate & " " & item.DataBits & " " & item.Handshake, _
           "2 19200 7 3"
settings.InterfaceConfigurations.Add item, "RS232"
test.Equal "kept serial settings", settings.InterfaceConfigurations("RS232").BaudRate, 19200

' --- connecting
Set discovery = test.Create("CvnDiscovery.CvnDiscoveryCtl")
Set discovery.IOSettings = settings
test.Equal "buttons", discovery.ConnectButtonsVisible, True
discovery.ConnectButtonsVisible = False
test.Equal "buttons", discovery.ConnectButtonsVisible, False
discovery.SupportInstrumentsLabelVisible = False
test.Equal "label", discovery.SupportInstrumentsLabelVisible, False
discovery.Address = test.Argument(2)
On Error Resume Next
discovery.Connect
test.Equal "no answer: number", Err.Number, &H80040005
test.Equal "no answer: the status tells it", InStr(discovery.StatusText, Err.Description) > 0, True
test.Equal "no answer: it names the address", InStr(Err.Description, test.Argument(2)) > 0, True
Err.Clear
On Error GoTo 0
discovery.Address = test.Argument(1)
test.Equal "Address", discovery.Address, test.Argument(1)
discovery.Connect
test.Equal "StatusText", discovery.StatusText, "Connected to M7718C at " & test.Argument(1) & "."
test.Equal "session's address", settings.IO.Address, test.Argument(1)
test.Equal "LastAddress", settings.LastAddress, test.Argument(1)
test.Equal "session's kind", settings.IO.ConnectionKind, "LAN"

Set instrument.IO = discovery.IOSettings.IO
test.Equal "Model", server.Model & server.ModelName & instrument.Model, "M7718CM7718CM7718C"
test.Equal "FirmwareRevision", instrument.FirmwareRevision, "B.03.40"
test.Equal "SerialNumber", instrument.SerialNumber, "US00000001"
test.Equal "ArbInstalled", options.ArbInstalled, True
names = " "
For Each item In options.Names
    names = names & item & " "
Next
test.Equal "options", InStr(names, " R2X ") > 0, True

' --- downloads
test.Equal "HasDualArbOption", arb.HasDualArbOption, True
arb.DownloadIQ "SCRIPTIQ", test.Codes("1 2 3 4"), test.Codes("-1 -2 -3 -4"), 0
codes = test.Codes("1 -1 2 -2 3 -3 4 -4")
arb.DownloadInterleaved "SCRIPT", codes, 0
arb.DownloadMarkers "SCRIPT", test.Codes("1 0 3 15"), 0
message = "before"
number = instrument.ReadError(message)
test.Equal "ReadError", number & " " & message, "0 No error"
test.Equal "ArbFileSelected", TypeName(arb.ArbFileSelected), "Boolean"
On Error Resume Next
names = arb.SelectedArbFile
Err.Clear
arb.DownloadInterleaved "SCRIPT", Array(1, 2), 0
test.Equal "a script's own array", Err.Number, 13
Err.Clear
arb.DownloadInterleaved "A NAME THAT IS MUCH TOO LONG FOR ANY INSTRUMENT", codes, 0
Err.Clear
number = instrument.ReadError(message)
test.Equal "the instrument says why not", number <> 0 And Len(message) > 0, True
On Error GoTo 0

' --- captured states
Set item = test.Create("CvnInstrSetups.StateInfo")
Set names = test.Create("CvnInstrSetups.InstrumentState")
test.Equal "Count", item.Count, 0
test.Equal "SetupInterface", item.SetupInterface Is Nothing, True
On Error Resume Next
item.Capture "one"
test.Equal "nobody to capture from", Err.Number <> 0, True
Err.Clear
item.Restore 1
ExpectError "nobody to restore", 91, "CvnInstrSetups.StateInfo", _
            "No instrument control is there to capture states from or restore them to."
item.Rename 1, "two"
ExpectError "Rename", 9, "CvnInstrSetups.StateInfo", "Subscript out of range"
item.Delete 1
ExpectError "Delete", 9, "CvnInstrSetups.StateInfo", "Subscript out of range"
number = item.StateName(1)
ExpectError "StateName", 9, "CvnInstrSetups.StateInfo", "Subscript out of range"
number = item.Model(1)
ExpectError "Model", 9, "CvnInstrSetups.StateInfo", "Subscript out of range"
number = item.Version(1)
ExpectError "Version", 9, "CvnInstrSetups.StateInfo", "Subscript out of range"
number = item.CaptureDate(0)
ExpectError "CaptureDate", 9, "CvnInstrSetups.StateInfo", "Subscript out of range"
Set names.StateInfo = server
test.Equal "a list of somebody else", Err.Number, 13
Err.Clear
On Error GoTo 0
Set names.StateInfo = item
test.Equal "StateInfo", names.StateInfo Is item, True
test.Equal "StatusText", Len(names.StatusText) > 0, True
Set names.StateInfo = Nothing

' --- the screen
server.PrepareForCapture
server.SaveScreenImage test.Argument(3) & "\vbs.bmp", 100
test.Equal "FileExists", instrument.FileExists("NOSUCH.BMP"), False
On Error Resume Next
server.SaveScreenImage test.Argument(3) & "\no-such-folder\screen.bmp", 100
test.Equal "no such folder", Err.Number <> 0, True
On Error GoTo 0

' --- where a control lies
Set item = test.Create("CvnInstrUtilities.VCUtilities")
On Error Resume Next
number = item.TopLevelWindow(discovery)
ExpectError "TopLevelWindow", &H80040005, "CvnInstrUtilities.VCUtilities", _
            "The control does not lie in a window."
Set names = item.ContainingDocument(discovery)
ExpectError "ContainingDocument", &H80040005, "CvnInstrUtilities.VCUtilities", _
            "The control does not lie in a document."
On Error GoTo 0

' --- the end of the connection
discovery.Disconnect
test.Equal "StatusText", discovery.StatusText, "Not connected."
test.Equal "no session", settings.IO Is Nothing, True
On Error Resume Next
item = instrument.SerialNumber
test.Equal "an instrument that was disconnected", Err.Number, &H80040005
On Error GoTo 0
Set instrument.IO = Nothing
