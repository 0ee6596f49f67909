; Whom it is installed for: the user, which needs no administrator, or all users.

Var ForAll

!macro ScopeFunctions un
; The keys of the system's own word size, and of $Scope.
Function ${un}UseScope
  ${If} ${RunningX64}
    SetRegView 64
  ${EndIf}
  ${If} $Scope == "all"
    SetShellVarContext all
  ${Else}
    SetShellVarContext current
  ${EndIf}
FunctionEnd

; Goes on with an administrator's rights, or ends.
Function ${un}NeedAdministrator
  UserInfo::GetAccountType
  Pop $0
  ${If} $0 == "Admin"
    Return
  ${EndIf}
  SetErrorLevel ${NEEDS_ADMINISTRATOR}
  ${IfNot} ${Silent}
    ClearErrors
    ExecShell "runas" "$EXEPATH" "/allusers"
    ${IfNot} ${Errors}
      SetErrorLevel 0
    ${EndIf}
  ${EndIf}
  Quit
FunctionEnd
!macroend
!insertmacro ScopeFunctions ""
!insertmacro ScopeFunctions "un."

Function FindScope
  StrCpy $Scope "user"
  ${GetParameters} $0
  ClearErrors
  ${GetOptions} $0 "/allusers" $1
  ${IfNot} ${Errors}
    StrCpy $Scope "all"
    Call NeedAdministrator
  ${EndIf}
  Call UseScope
FunctionEnd

; The scope that this uninstaller's folder was installed for.
Function un.FindScope
  StrCpy $Scope "all"
  Call un.UseScope
  ReadRegStr $0 HKLM "${KEY}" "InstallDir"
  ${If} $0 == $INSTDIR
    Call un.NeedAdministrator
  ${Else}
    StrCpy $Scope "user"
    Call un.UseScope
  ${EndIf}
FunctionEnd

; One of them would hide the other.
Function RefuseOtherScope
  ${If} $Scope == "all"
    ReadRegStr $0 HKCU "${KEY}" "InstallDir"
    StrCpy $1 "this user"
  ${Else}
    ReadRegStr $0 HKLM "${KEY}" "InstallDir"
    StrCpy $1 "all users"
  ${EndIf}
  ${If} $0 != ""
    SetErrorLevel ${OTHER_SCOPE}
    MessageBox MB_OK|MB_ICONSTOP "It is installed for $1 in $0. Remove that first." /SD IDOK
    Quit
  ${EndIf}
FunctionEnd

Function UsualFolder
  ${If} $Scope == "user"
    StrCpy $INSTDIR "$LOCALAPPDATA\Programs\KRV"
  ${ElseIf} ${RunningX64}
    StrCpy $INSTDIR "$PROGRAMFILES64\KRV"
  ${Else}
    StrCpy $INSTDIR "$PROGRAMFILES\KRV"
  ${EndIf}
FunctionEnd

; Who is asked has not yet said so on the command line, nor installed it before.
Function ScopePage
  ${If} $Scope == "all"
  ${OrIf} $OldFolder != ""
    Abort
  ${EndIf}
  !insertmacro MUI_HEADER_TEXT "Install for" "Who will use the toolbar on this computer?"
  nsDialogs::Create 1018
  Pop $0
  ${NSD_CreateRadioButton} 0 10u 100% 12u "&Only me; needs no administrator"
  Pop $0
  ${NSD_Check} $0
  ${NSD_CreateRadioButton} 0 30u 100% 12u "&All users of this computer; asks for an administrator"
  Pop $ForAll
  nsDialogs::Show
FunctionEnd

Function ScopePageLeave
  ${NSD_GetState} $ForAll $0
  ${If} $0 == ${BST_CHECKED}
    StrCpy $Scope "all"
    Call NeedAdministrator
    Call UseScope
    Call RefuseOtherScope
    Call UsualFolder
  ${EndIf}
FunctionEnd
