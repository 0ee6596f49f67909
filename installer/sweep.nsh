; Removal of what earlier runs have installed, and of nothing else: each folder has a list of its files, whose
; last lines are the folders below it.

!define LIST "installed-files.txt"

; The name of the folder that stays; empty for none.
Var Keep
; A folder some of whose files are in use; empty for none.
Var Held

!macro SweepFunctions un
; The folder $Dir. Files that a user has put there stay, and so does then the folder.
Function ${un}RemoveFolder
  StrCpy $4 ""
  FileOpen $2 "$Dir\${LIST}" r
  ${Do}
    ClearErrors
    FileRead $2 $3
    ${If} ${Errors}
      ${ExitDo}
    ${EndIf}
    StrCpy $3 $3 -2
    StrCpy $5 $3 1 -1
    ${If} $5 == "\"
      RMDir "$Dir\$3"
    ${Else}
      Delete "$Dir\$3"
      ${If} ${FileExists} "$Dir\$3"
        StrCpy $4 "held"
      ${EndIf}
    ${EndIf}
  ${Loop}
  FileClose $2
  ${If} $4 == ""
    Delete "$Dir\${LIST}"
    RMDir "$Dir"
  ${Else}
    StrCpy $Held $Dir
  ${EndIf}
  ClearErrors
FunctionEnd

; All folders but $Keep.
Function ${un}Sweep
  StrCpy $Held ""
  Push $Dir
  FindFirst $0 $1 "$INSTDIR\*"
  ${DoWhile} $1 != ""
    ${If} $1 != $Keep
    ${AndIf} ${FileExists} "$INSTDIR\$1\${LIST}"
      StrCpy $Dir "$INSTDIR\$1"
      Call ${un}RemoveFolder
    ${EndIf}
    FindNext $0 $1
  ${Loop}
  FindClose $0
  Pop $Dir
  ClearErrors
FunctionEnd
!macroend
!insertmacro SweepFunctions ""
!insertmacro SweepFunctions "un."
