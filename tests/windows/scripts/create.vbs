' Creates and enumerates as VBScript itself does it, and ends with an error that it doesn't handle.
Dim settings, item, all
Set settings = CreateObject("CvnDiscovery.IOSettings")
settings.SupportedInstruments.Add "M7718C"
settings.SupportedInstruments.Add "M9920C"
For Each item In settings.SupportedInstruments
    all = all & item & " "
Next
test.Equal "all", all, test.Argument(1)
    settings.SupportedInstruments.Remove 7
