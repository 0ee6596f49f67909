// The toolbar control as JScript uses it: every member, and its errors; `excel`, `user` and the
// argument are those of control.vbs.

function failure(work) {
    try {
        work();
        return "none";
    } catch (error) {
        return (error.number >>> 0).toString(16) + " " + error.description;
    }
}

var control = test.Create("CvnKRVControl.KRVControl");
var buttons = excel.CommandBars.Item("TQL/KRV Signal Generator").Controls;
function tip(key) {
    return buttons.Item(key).TooltipText;
}

// --- without a host
test.Equal("no host", control.ConnectedApplication == null, true);
test.Equal("DoSaveScreenImage", failure(function() { control.DoSaveScreenImage(); }),
           "80040005 DataConnection Object Not Set");
test.Equal("its box", user.Answered().split("\r\n").pop(), "DataConnection Object Not Set");
control.UpdateConnectedStatus();
control.DoHelp();
control.StartTransfer(true, null);
control.StopTransfer(undefined, {});
user.WillClose();
control.DoAbout();
control.DoSetup();
user.Closed();
user.Answered();
user.WillClose();
control.DoDataTransfer(null, "not a number");
control.DoDataTransfer(0, 1);
test.Equal("the download dialog", user.Closed().indexOf("Download") >= 0, true);
test.Equal("nothing to say", user.Answered(), "");

// --- calls that can't be
test.Equal("no such method", failure(function() { control.NoSuchMember(); }).substr(0, 8), "800a01b6");
test.Equal("too few arguments", failure(function() { control.StartTransfer(1); }) != "none", true);

// --- what no adapter takes, put as a value
control.ConnectedApplication = {Name: "Microsoft Excel"};
test.Equal("a script's object", control.ConnectedApplication == null, true);

// --- with a host
control.ConnectedApplication = excel;
test.Equal("the host", control.ConnectedApplication.Name, excel.Name);
buttons.Item("PutData").Enabled = false;
user.Places(control);
user.WillConnectTo(test.Argument(1));
control.DoConnect();
control.UpdateConnectedStatus();
test.Equal("tip", tip("Connected"), "Connected to M7718C Signal Generator at " + test.Argument(1));
test.Equal("enabled", buttons.Item("PutData").Enabled && buttons.Item("GetImage").Enabled, true);
test.Equal("visible", buttons.Item("Connected").Visible && !buttons.Item("Connect").Visible, true);

// --- interfaces besides the one that scripts get
var setup = test.Through(control, "{7C1F0C52-6F0E-4A1F-9A36-2F6D1A3B7A02}");
test.Equal("files of older software", setup.GetLegacyVantorFileInfo("", "") == null, true);
test.Equal("Model", setup.Model, "M7718C");
test.Equal("Version", setup.Version != "", true);
setup.SetupValue = 7;
test.Equal("no snapshot",
           user.Answered().indexOf("State restore operation failed--state has not been restored."), 0);
var unconnected = test.Through(test.Create("CvnKRVControl.KRVControl"),
                               "{7C1F0C52-6F0E-4A1F-9A36-2F6D1A3B7A02}");
test.Equal("unconnected", failure(function() { return unconnected.SetupValue; }),
           "80040005 No instrument is connected. Connect to an instrument first.");
test.Equal("unconnected", failure(function() { return unconnected.Version; }),
           "80040005 No instrument is connected. Connect to an instrument first.");
test.Equal("category", test.Through(control, "{7C1F0C52-6F0E-4A1F-9A36-2F6D1A3B7A04}").CategoryId,
           "{395BCE5B-69FC-441a-904F-1373971E4237}");
