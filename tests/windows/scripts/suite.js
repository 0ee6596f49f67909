// The suite's components as JScript uses them: every member, and their errors. Argument 1 is the
// address of an M7718C, argument 2 where nothing answers, argument 3 a folder.

// What a failing piece of work throws: "NUMBER DESCRIPTION".
function failure(work) {
    try {
        work();
        return "none";
    } catch (error) {
        return (error.number >>> 0).toString(16) + " " + error.description;
    }
}

var notConnected = "80040005 No instrument is connected. Connect to an instrument first.";
var server = test.Create("CvnKRVServer.CvnKRVServer");
var instrument = server.Instrument;
var arb = server.Arb;
var options = server.Options;

// --- unconnected
test.Equal("session", instrument.IO == null, true);
test.Equal("supported models", new VBArray(server.SupportedModels).toArray().join(" "),
           "M7718C M9920C M9920D M771XB M771XD KRV-B");
test.Equal("ModelName", failure(function() { return server.ModelName; }), notConnected);
test.Equal("Names", failure(function() { return options.Names; }), notConnected);
test.Equal("ArbInstalled", failure(function() { return options.ArbInstalled; }), notConnected);
test.Equal("CaptureState", failure(function() { return instrument.CaptureState(); }), notConnected);
test.Equal("RestoreState", failure(function() { instrument.RestoreState(3); }) != "none", true);
test.Equal("SelectedArbFile", failure(function() { return arb.SelectedArbFile; }), notConnected);
test.Equal("ArbFileSelected", failure(function() { return arb.ArbFileSelected; }), notConnected);
test.Equal("a method that isn't there", failure(function() { server.NoSuchMember(); }).substr(0, 8),
           "800a01b6");

// --- settings
var settings = test.Create("CvnDiscovery.IOSettings");
settings.InstrumentType = "Signal Generator";
test.Equal("InstrumentType", settings.InstrumentType, "Signal Generator");
settings.HostName = "bench7";
test.Equal("HostName", settings.HostName, "bench7");
settings.HostName = "My Computer";
var supported = settings.SupportedInstruments;
supported.Add("M7718C", "M7718C");
supported.Add("M9920C", "M9920C");
test.Equal("Count", supported.Count, 2);
test.Equal("Item", supported.Item("m9920C") + supported.Item(1), "M9920CM7718C");
supported.Remove(2);
test.Equal("a number that has gone", failure(function() { supported.Item(2); }),
           "800a0009 Subscript out of range");
test.Equal("a key that has gone", failure(function() { supported.Remove("M9920C"); }),
           "800a0005 Invalid procedure call or argument");

var serial = test.Create("CvnRS232.RS232Config");
serial.Port = 2;
serial.BaudRate = 19200;
serial.DataBits = 7;
serial.Handshake = 3;
test.Equal("serial settings", [serial.Port, serial.BaudRate, serial.DataBits, serial.Handshake].join(),
           "2,19200,7,3");
settings.InterfaceConfigurations.Add(serial, "RS232");
test.Equal("kept serial settings", settings.InterfaceConfigurations.Item("RS232").DataBits, 7);

// --- connecting
var discovery = test.Create("CvnDiscovery.CvnDiscoveryCtl");
discovery.IOSettings = settings;
discovery.ConnectButtonsVisible = false;
discovery.SupportInstrumentsLabelVisible = false;
test.Equal("visible", discovery.ConnectButtonsVisible || discovery.SupportInstrumentsLabelVisible, false);
discovery.Address = test.Argument(2);
test.Equal("no answer", failure(function() { discovery.Connect(); }).substr(0, 8), "80040005");
discovery.Address = test.Argument(1);
discovery.Connect();
test.Equal("StatusText", discovery.StatusText, "Connected to M7718C at " + discovery.Address + ".");
instrument.IO = discovery.IOSettings.IO;
test.Equal("session", instrument.IO.Address + (instrument.IO.ConnectionKind != ""),
           test.Argument(1) + "true");
test.Equal("LastAddress", settings.LastAddress, test.Argument(1));
test.Equal("model", server.Model + server.ModelName + instrument.Model, "M7718CM7718CM7718C");
test.Equal("identity", instrument.FirmwareRevision != "" && instrument.SerialNumber != "", true);
test.Equal("options", arb.HasDualArbOption && options.ArbInstalled, true);

// --- downloads
arb.DownloadIQ("SCRIPTJIQ", test.Codes("5 6"), test.Codes("-5 -6"), 0);
arb.DownloadInterleaved("SCRIPTJ", test.Codes("5 -5 6 -6"), 0);
arb.DownloadMarkers("SCRIPTJ", test.Codes("0 1"), 0);
test.Equal("ReadError", instrument.ReadError(""), 0);
test.Equal("a script's own array", failure(function() { arb.DownloadMarkers("SCRIPTJ", [1, 2], 0); }).substr(0, 8),
           "800a000d");
test.Equal("too few arguments", failure(function() { arb.DownloadIQ("SCRIPTJ"); }) != "none", true);

// --- captured states
var states = test.Create("CvnInstrSetups.StateInfo");
var panel = test.Create("CvnInstrSetups.InstrumentState");
var state = "one";
var source = {
    Model: function() { return "M1"; },
    Version: function() { return "V1"; },
    SetupValue: function() { return state; }
};
states.SetupInterface = source;
test.Equal("SetupInterface", states.SetupInterface == source, true);
states.Capture("first");
state = "two";
states.Capture("second");
test.Equal("a name that is taken", failure(function() { states.Capture("FIRST"); }) != "none", true);
test.Equal("captured", states.Count + states.StateName(2) + states.Model(1) + states.Version(1), "2secondM1V1");
test.Equal("today", Math.abs(new Date().getTime() - new Date(states.CaptureDate(1)).getTime()) < 60000, true);
states.Restore(1);
test.Equal("restored", source.SetupValue, "one");
states.Rename(1, "again");
test.Equal("renamed", states.StateName(1), "again");
states.Delete(1);
test.Equal("deleted", states.Count + states.StateName(1), "1second");
test.Equal("no such state", failure(function() { states.Restore(2); }), "800a0009 Subscript out of range");
panel.StateInfo = states;
test.Equal("StateInfo", panel.StateInfo.Count, 1);
test.Equal("StatusText", panel.StatusText, "");

// --- the screen
server.PrepareForCapture();
server.SaveScreenImage(test.Argument(3) + "\\js.bmp", 100);
test.Equal("FileExists", instrument.FileExists("NOSUCH.BMP"), false);
test.Equal("no such folder",
           failure(function() { server.SaveScreenImage(test.Argument(3) + "\\none\\a.bmp", 100); }) != "none",
           true);

// --- where a control lies
var utilities = test.Create("CvnInstrUtilities.VCUtilities");
test.Equal("TopLevelWindow", failure(function() { utilities.TopLevelWindow(discovery); }),
           "80040005 The control does not lie in a window.");
test.Equal("ContainingDocument", failure(function() { utilities.ContainingDocument(discovery); }),
           "80040005 The control does not lie in a document.");
test.Equal("no control", failure(function() { utilities.TopLevelWindow(server); }) != "none", true);

// --- the end of the connection
discovery.Disconnect();
test.Equal("StatusText", discovery.StatusText, "Not connected.");
test.Equal("no session", settings.IO == null, true);
