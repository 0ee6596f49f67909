#include "cli/FormFilling.h"

#include "cli/ExitCode.h"

namespace krv::cli {

void FormFilling::Fill(const WaveformArguments& arguments) {
    FillTypes(arguments);
    FillSources(arguments);
    FillMarkers(arguments);
    FillDestination(arguments);
}

void FormFilling::FillTypes(const WaveformArguments& arguments) {
    Select(m_dialog.cboWaveformType, arguments.waveformType, "--type can't be chosen.");
    Select(
        m_dialog.cboFileTypeWF, arguments.fileType,
        "--file-type other than ascii can't be used with --type waveform: scalable waveforms are "
        "read from text. Leave --file-type out, or name what the values are with --type 14-bit "
        "or --type 16-bit.");
}

void FormFilling::FillSources(const WaveformArguments& arguments) {
    Type(m_dialog.TextIFileName, arguments.iFile, "--i can't be used.");
    const std::string interleaved =
        " can't be used with --type 16-bit: the I file of 16-bit values holds I and Q interleaved. "
        "Leave it out.";
    if (arguments.findQ) {
        CheckAgain(m_dialog.checkAutoFindQ, "--find-q" + interleaved);
    } else {
        Check(m_dialog.checkAutoFindQ, false, "--find-q can't be switched off.");
    }
    if (arguments.qFile) {
        Type(m_dialog.TextQFileName, *arguments.qFile, "--q" + interleaved);
    }
}

void FormFilling::FillMarkers(const WaveformArguments& arguments) {
    Check(m_dialog.chkMarkerSource, arguments.markerFile || arguments.findMarker,
          "--marker-file and --find-marker can't be used.");
    if (arguments.findMarker) {
        CheckAgain(m_dialog.checkAutoFindMarker, "--find-marker can't be used.");
    }
    if (arguments.markerFile) {
        Check(m_dialog.checkAutoFindMarker, false, "--find-marker can't be switched off.");
        Type(m_dialog.TextMarker, *arguments.markerFile, "--marker-file can't be used.");
    }
    if (arguments.markerStart) {
        Type(m_dialog.TextMarkerStart, *arguments.markerStart, "--marker-start can't be used.");
    }
    if (arguments.markerLength) {
        Type(m_dialog.TextMarkerLength, *arguments.markerLength, "--marker-length can't be used.");
    }
}

void FormFilling::FillDestination(const WaveformArguments& arguments) {
    if (arguments.scale) {
        Type(m_dialog.TextScaleFactor, *arguments.scale, "--scale can't be used.");
    }
    if (arguments.name) {
        Check(m_dialog.checkAutoName, false, "--name can't be used.");
        Type(m_dialog.TextDestinationName, *arguments.name, "--name can't be used.");
    } else {
        CheckAgain(m_dialog.checkAutoName, "The destination can't be named: give it with --name.");
    }
}

void FormFilling::Select(forms::ComboBox& box, int index, const std::string& refusal) {
    if (box.ListIndex != index && !m_screen.Select(box, index)) {
        throw UsageError(refusal);
    }
}

void FormFilling::Check(forms::CheckBox& box, bool value, const std::string& refusal) {
    if (box.Value != value && !m_screen.Click(box)) {
        throw UsageError(refusal);
    }
}

void FormFilling::CheckAgain(forms::CheckBox& box, const std::string& refusal) {
    Check(box, false, refusal);
    Check(box, true, refusal);
}

void FormFilling::Type(forms::TextBox& box, const std::string& text, const std::string& refusal) {
    if (!m_screen.Type(box, text)) {
        throw UsageError(refusal);
    }
}

}  // namespace krv::cli
