' What a macro finds of the add-in: Application is the application that has loaded it, without an
' instrument, with one document.

Option Explicit

Dim addIn, bar, captions, index, control, parts, part, before

Set addIn = Application.COMAddIns("KRVAddIn.Connect")
test.Equal "connected", addIn.Connect, True
test.Equal "its name", addIn.Description, "Tallyport for TQL/KRV"
test.Equal "its class", UCase(addIn.Guid), "{7C1F0C52-6F0E-4A1F-9A36-2F6D1A3B7B10}"
test.Equal "one of them by its position", Application.COMAddIns.Item(1).ProgId, "KRVAddIn.Connect"

captions = Array("Corvane TQL/KRV", "Connect", "Connected", "Settings", "PutData", "GetImage", "Help")
Set bar = Application.CommandBars("TQL/KRV Signal Generator")
test.Equal "the bar's controls", bar.Controls.Count, 7
test.Equal "the bar lies behind a ribbon", bar.Visible, False
For index = 1 To 7
    Set control = bar.Controls(index)
    test.Equal "caption " & index, control.Caption, captions(index - 1)
    test.Equal "enabled: " & control.Caption, control.Enabled, index < 4 Or index = 7
    test.Equal "visible: " & control.Caption, control.Visible, index <> 3
Next
test.Equal "a tool tip", bar.Controls("PutData").TooltipText, "Download Arb Waveform Data"

' Nothing is kept of a toolbar that nobody has used.
Set parts = Application.ActiveWorkbook.CustomXMLParts
before = parts.Count
test.Equal "parts of the toolbar", parts.SelectByNamespace("urn:tallyport:tql-krv:toolbar").Count, 0
test.Equal "saved", Application.ActiveWorkbook.Saved, True
Set part = parts.Add("<mine xmlns='urn:mine'>x</mine>")
test.Equal "a part's namespace", part.NamespaceURI, "urn:mine"
test.Equal "a part's XML", parts.SelectByNamespace("urn:mine")(1).XML, "<mine xmlns='urn:mine'>x</mine>"
test.Equal "changed by it", Application.ActiveWorkbook.Saved, False
part.Delete
test.Equal "parts afterwards", parts.Count, before

' The control of the active document.
Set control = addIn.Object.Control
control.UpdateConnectedStatus
test.Equal "its application", control.ConnectedApplication.Name, Application.Name

On Error Resume Next
Application.CommandBars "no such bar"
test.Equal "an unknown bar", Err.Number, 5
