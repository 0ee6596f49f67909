// Creates and enumerates as JScript itself does it, and ends with an error that it doesn't handle.
var settings = new ActiveXObject("CvnDiscovery.IOSettings");
settings.SupportedInstruments.Add("M7718C");
settings.SupportedInstruments.Add("M9920C");
var all = "";
for (var items = new Enumerator(settings.SupportedInstruments); !items.atEnd(); items.moveNext()) {
    all += items.item() + " ";
}
test.Equal("all", all, test.Argument(1));
    settings.SupportedInstruments.Remove(7);
