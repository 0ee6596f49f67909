; Excel and Word, which find the add-in by keys that its own registration writes.

!define ADD_IN "KRVAddIn.Connect"

; Whether Excel and Word load it, as the user has it; empty where it isn't registered.
Var ExcelLoads
Var WordLoads

!macro Remember host loads
  ReadRegDWORD ${loads} SHCTX "Software\Microsoft\Office\${host}\Addins\${ADD_IN}" "LoadBehavior"
!macroend

; Before a new registration.
Function RememberAddIn
  !insertmacro Remember Excel $ExcelLoads
  !insertmacro Remember Word $WordLoads
  ClearErrors
FunctionEnd

; What the user has chosen stays; an add-in that was unloaded after a failure gets another chance.
!macro Restore host loads
  ${If} ${loads} != ""
  ${AndIf} ${loads} <> 2
    ReadRegStr $0 SHCTX "Software\Microsoft\Office\${host}\Addins\${ADD_IN}" "FriendlyName"
    ${If} $0 != ""
      WriteRegDWORD SHCTX "Software\Microsoft\Office\${host}\Addins\${ADD_IN}" "LoadBehavior" ${loads}
    ${EndIf}
  ${EndIf}
!macroend

Function RestoreAddIn
  !insertmacro Restore Excel $ExcelLoads
  !insertmacro Restore Word $WordLoads
  ClearErrors
FunctionEnd

; What this user has said of an add-in that all users had.
Function un.ForgetAddIn
  DeleteRegKey HKCU "Software\Microsoft\Office\Excel\Addins\${ADD_IN}"
  DeleteRegKey HKCU "Software\Microsoft\Office\Word\Addins\${ADD_IN}"
FunctionEnd
