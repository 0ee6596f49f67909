; The setup program. tools/package-setup makes it:
;   makensis -DVERSION=1.0.0 -DSTAGE=FOLDER -DFILES=FILE -DOUT=FILE setup.nsi
; STAGE holds what is installed, FILES the macros that copy it. The program is a 32-bit one, which every
; Windows runs; with -DFOR64 it is a 64-bit one, which is larger and made sooner, for a Wine without 32-bit programs.
;
; Each run installs into a new folder "VERSION" or "VERSION-N", so that libraries which Excel or Word hold are in
; nobody's way, and removes those of earlier runs that nothing holds.
;
; Command line: /S silent, /D=FOLDER (the last word, without quotation marks), /allusers, /bench.
; Exit codes, besides 0 and the 1 of a user who cancels:
!define NEEDS_ADMINISTRATOR 3
!define NOT_REGISTERED 4
!define NOT_WRITTEN 5
!define STILL_HELD 6
!define OTHER_SCOPE 7

!ifdef FOR64
Target amd64-unicode
SetCompressor zlib
!else
Target x86-unicode
SetCompressor /SOLID lzma
!endif
RequestExecutionLevel user
ManifestDPIAware true
AllowSkipFiles off

!define TITLE "TQL/KRV Toolbar"
!define KEY "Software\KRVControl"
!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\KRVControl"
!define RUN_ONCE_KEY "Software\Microsoft\Windows\CurrentVersion\RunOnce"

Name "${TITLE} ${VERSION}"
OutFile "${OUT}"
BrandingText " "
VIProductVersion "${VERSION}.0"
VIAddVersionKey ProductName "Tallyport"
VIAddVersionKey CompanyName "Tallyport"
VIAddVersionKey FileDescription "${TITLE} setup"
VIAddVersionKey FileVersion "${VERSION}"
VIAddVersionKey ProductVersion "${VERSION}"
VIAddVersionKey LegalCopyright "${COPYRIGHT}"

!include FileFunc.nsh
!include LogicLib.nsh
!include MUI2.nsh
!include nsDialogs.nsh
!include x64.nsh

; Whom it is installed for: "user" or "all".
Var Scope
; The new folder's name and path.
Var Folder
Var Dir
; The folder of the earlier run; empty for none.
Var OldFolder

!include "${FILES}"
!include libraries.nsh
!include office.nsh
!include sweep.nsh
!include scope.nsh

!define MUI_COMPONENTSPAGE_NODESC
Page custom ScopePage ScopePageLeave
!insertmacro MUI_PAGE_COMPONENTS
!define MUI_PAGE_CUSTOMFUNCTION_PRE SkipWhereInstalled
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"

; Takes back what was begun.
!macro GiveUp code text
  SetOutPath "$TEMP"
  RMDir /r "$Dir"
  RMDir "$INSTDIR"
  SetErrorLevel ${code}
  Abort "${text}"
!macroend

; There is one place for it: another one would leave the first behind.
Function SkipWhereInstalled
  ${If} $OldFolder != ""
    Abort
  ${EndIf}
FunctionEnd

Function ChooseFolder
  StrCpy $Folder "${VERSION}"
  StrCpy $0 1
  ${DoWhile} ${FileExists} "$INSTDIR\$Folder\*.*"
    IntOp $0 $0 + 1
    StrCpy $Folder "${VERSION}-$0"
  ${Loop}
  StrCpy $Dir "$INSTDIR\$Folder"
FunctionEnd

Function WriteKeys
  WriteRegStr SHCTX "${KEY}" "InstallDir" "$INSTDIR"
  WriteRegStr SHCTX "${KEY}" "Folder" "$Folder"
  WriteRegStr SHCTX "${KEY}" "Version" "${VERSION}"
  WriteUninstaller "$INSTDIR\uninstall.exe"
  ; What an earlier removal has left to do is done with the next sweep.
  DeleteRegValue SHCTX "${RUN_ONCE_KEY}" "KRVControl"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "DisplayName" "${TITLE}"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION}"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "Publisher" "Tallyport"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "InstallLocation" "$INSTDIR"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\uninstall.exe"'
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "NoModify" 1
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "NoRepair" 1
FunctionEnd

Section "!Toolbar and krv" Main
  SectionIn RO
  Call ChooseFolder
  ClearErrors
  !insertmacro MainFiles
  ${If} ${RunningX64}
    !insertmacro X64Files
  ${EndIf}
  ${If} ${Errors}
    !insertmacro GiveUp ${NOT_WRITTEN} "$Dir can't be written."
  ${EndIf}
  SetOutPath "$TEMP"
  Call RememberAddIn
  Call ReplaceLibraries
  ${If} $Failed != ""
    !insertmacro GiveUp ${NOT_REGISTERED} "$Failed can't be registered."
  ${EndIf}
  Call RestoreAddIn
  Call WriteKeys
  CreateDirectory "$SMPROGRAMS\KRV"
  ${If} ${RunningX64}
    CreateShortcut "$SMPROGRAMS\KRV\krv command line.lnk" "$SYSDIR\cmd.exe" '/k "path $Dir;%PATH%"'
  ${EndIf}
  CreateShortcut "$SMPROGRAMS\KRV\Examples.lnk" "$Dir\examples"
SectionEnd

Section /o "krvbook and krvdoc, to try it without Office" Bench
  ${If} ${RunningX64}
    !insertmacro BenchFiles
    SetOutPath "$TEMP"
    CreateShortcut "$SMPROGRAMS\KRV\krvbook.lnk" "$Dir\bench\krvbook.exe"
    CreateShortcut "$SMPROGRAMS\KRV\krvdoc.lnk" "$Dir\bench\krvdoc.exe"
    WriteRegDWORD SHCTX "${KEY}" "Bench" 1
  ${EndIf}
SectionEnd

Section "-Finish"
  StrCpy $Keep $Folder
  Call Sweep
  ${GetSize} "$Dir" "/S=0K" $0 $1 $2
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "EstimatedSize" $0
  ${If} $Held != ""
    DetailPrint "Excel or Word still use $Held. It is removed when setup runs again."
  ${EndIf}
SectionEnd

Function .onInit
  Call FindScope
  Call RefuseOtherScope
  ReadRegStr $0 SHCTX "${KEY}" "InstallDir"
  ReadRegStr $OldFolder SHCTX "${KEY}" "Folder"
  ${If} $0 != ""
    StrCpy $INSTDIR $0
  ${ElseIf} $INSTDIR == ""
    Call UsualFolder
  ${EndIf}
  ${GetParameters} $0
  ClearErrors
  ${GetOptions} $0 "/bench" $1
  ${IfNot} ${Errors}
    SectionSetFlags ${Bench} ${SF_SELECTED}
  ${EndIf}
  ReadRegDWORD $0 SHCTX "${KEY}" "Bench"
  ${If} $0 = 1
    SectionSetFlags ${Bench} ${SF_SELECTED}
  ${EndIf}
FunctionEnd

Function un.onInit
  Call un.FindScope
  ReadRegStr $OldFolder SHCTX "${KEY}" "Folder"
FunctionEnd

Section "Uninstall"
  ${If} $OldFolder != ""
    StrCpy $Dir "$INSTDIR\$OldFolder"
    StrCpy $Action "/u "
    Call un.EachLibrary
  ${EndIf}
  Call un.ForgetAddIn
  DeleteRegKey SHCTX "${KEY}"
  DeleteRegKey SHCTX "${UNINSTALL_KEY}"
  Delete "$SMPROGRAMS\KRV\krv command line.lnk"
  Delete "$SMPROGRAMS\KRV\Examples.lnk"
  Delete "$SMPROGRAMS\KRV\krvbook.lnk"
  Delete "$SMPROGRAMS\KRV\krvdoc.lnk"
  RMDir "$SMPROGRAMS\KRV"
  StrCpy $Keep ""
  Call un.Sweep
  ${If} $Held != ""
    ; This program goes with the rest when the user logs on again.
    WriteRegStr SHCTX "${RUN_ONCE_KEY}" "KRVControl" '"$INSTDIR\uninstall.exe" /S'
    SetErrorLevel ${STILL_HELD}
    DetailPrint "Excel or Word still use $Held. It is removed when you log on again."
  ${Else}
    ; Whom it was for isn't known any more when the rest is removed.
    DeleteRegValue HKCU "${RUN_ONCE_KEY}" "KRVControl"
    DeleteRegValue HKLM "${RUN_ONCE_KEY}" "KRVControl"
    Delete "$INSTDIR\uninstall.exe"
    RMDir "$INSTDIR"
  ${EndIf}
SectionEnd
