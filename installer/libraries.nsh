; Registration of the libraries, by the system's own tool of each word size.

; "" to register, "/u " to unregister.
Var Action
; The library that couldn't be registered; empty for none.
Var Failed
Var Tool
Var Place

!macro LibraryFunctions un
; Each library in $Place, by $Tool.
Function ${un}LibrariesIn
  FindFirst $0 $1 "$Place\*.dll"
  ${DoWhile} $1 != ""
    StrCpy $2 ""
    ${If} $Scope == "user"
      StrCpy $2 "/n /i:user "
    ${EndIf}
    ClearErrors
    ExecWait '"$Tool" /s $Action$2"$Place\$1"' $3
    ${If} ${Errors}
    ${OrIf} $3 <> 0
      Call ${un}IsSuiteOfOthers
      ${If} $3 != "others"
        StrCpy $Failed "$Place\$1"
      ${EndIf}
    ${EndIf}
    FindNext $0 $1
  ${Loop}
  FindClose $0
FunctionEnd

; Where the suite is installed its own components stay, and ours in $1 aren't needed: $3 is "others".
Function ${un}IsSuiteOfOthers
  ${If} $1 == "KRVSuite.dll"
    ReadRegStr $4 HKCR "CvnKRVServer.CvnKRVServer\CLSID" ""
    ${If} $4 != ""
      DetailPrint "The suite's own components stay in use."
      StrCpy $3 "others"
    ${EndIf}
  ${EndIf}
FunctionEnd

; All libraries below $Dir.
Function ${un}EachLibrary
  StrCpy $Failed ""
  ; What the system calls each of its own tools depends on who asks.
!ifdef FOR64
  StrCpy $Tool "$SYSDIR\regsvr32.exe"
!else
  StrCpy $Tool "$WINDIR\sysnative\regsvr32.exe"
!endif
  ${If} ${RunningX64}
    StrCpy $Place "$Dir\x64"
    Call ${un}LibrariesIn
  ${EndIf}
!ifdef FOR64
  StrCpy $Tool "$WINDIR\SysWOW64\regsvr32.exe"
!else
  StrCpy $Tool "$SYSDIR\regsvr32.exe"
!endif
  ; A system without it has no 32-bit programs.
  ${If} ${FileExists} $Tool
    StrCpy $Place "$Dir\x86"
    Call ${un}LibrariesIn
  ${EndIf}
FunctionEnd
!macroend
!insertmacro LibraryFunctions ""
!insertmacro LibraryFunctions "un."

Function RegisterOld
  ${If} $OldFolder != ""
    StrCpy $Dir "$INSTDIR\$OldFolder"
    Call EachLibrary
    StrCpy $Dir "$INSTDIR\$Folder"
  ${EndIf}
FunctionEnd

; Puts those in $Dir into the place of the earlier ones. If that fails ($Failed), the earlier ones are back.
Function ReplaceLibraries
  StrCpy $Action "/u "
  Call RegisterOld
  StrCpy $Action ""
  Call EachLibrary
  ${If} $Failed != ""
    Push $Failed
    StrCpy $Action "/u "
    Call EachLibrary
    StrCpy $Action ""
    Call RegisterOld
    Pop $Failed
  ${EndIf}
FunctionEnd
