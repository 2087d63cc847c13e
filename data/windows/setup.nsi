; The set-up for Windows, made by tools/windows/package with -DVERSION, -DFOLDER (what is installed),
; -DFILES (its names as macros), -DPICTURE and -DTARGET. Without questions:
;   setup.exe /S [/AllUsers | /CurrentUser] [/StartWithWindows] [/NoStartMenu] [/D=C:\folder]
;   uninstall.exe /S [/DeleteSettings]
; Of its own use are /Inner, the part that needs an administrator's rights, and the uninstaller's
; /Upgrade, which leaves what the next version takes over.
Unicode true
Target amd64-unicode
SetCompressor /SOLID lzma
ManifestDPIAware true
RequestExecutionLevel user

!include MUI2.nsh
!include FileFunc.nsh
!include LogicLib.nsh
!include Sections.nsh
!include WinVer.nsh
!include "${FILES}"
!include "setup_words.nsh"

!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\Stillpost"
!define RUN_KEY "Software\Microsoft\Windows\CurrentVersion\Run"
!define PROGRAM "$INSTDIR\stillpost.exe"
; The same line as the program's own "start on systemboot" writes.
!define RUN_LINE '"${PROGRAM}" /autostarter'

Name "Stillpost"
OutFile "${TARGET}"
BrandingText "Stillpost ${VERSION}"
VIProductVersion "${VERSION}.0"
VIAddVersionKey /LANG=0 "ProductName" "Stillpost"
VIAddVersionKey /LANG=0 "ProductVersion" "${VERSION}"
VIAddVersionKey /LANG=0 "FileVersion" "${VERSION}"
VIAddVersionKey /LANG=0 "FileDescription" "Stillpost Setup"
VIAddVersionKey /LANG=0 "LegalCopyright" "The Stillpost developers, MIT License"

Var ForAll      ; 1: for all users of the computer
Var Inner       ; 1: a part of another set-up
Var Upgrade     ; 1: the uninstaller is a part of a set-up
Var NamedFolder ; by /D=
Var WasRunning  ; 1: the program had to end
Var DeleteSettings
Var OneUser     ; controls of the pages
Var AllUsers
Var DeleteBox

!define MUI_ICON "${FOLDER}/icons/stillpost.ico"
!define MUI_UNICON "${FOLDER}/icons/stillpost.ico"
!define MUI_WELCOMEFINISHPAGE_BITMAP "${PICTURE}"
!define MUI_ABORTWARNING
!define MUI_LANGDLL_ALLLANGUAGES
!define MUI_COMPONENTSPAGE_SMALLDESC
!define MUI_FINISHPAGE_TITLE_3LINES
!define MUI_FINISHPAGE_TEXT_LARGE
!define MUI_FINISHPAGE_TEXT "$(FirewallHint)"
!define MUI_FINISHPAGE_RUN
!define MUI_FINISHPAGE_RUN_TEXT "$(StartNow)"
!define MUI_FINISHPAGE_RUN_FUNCTION StartProgram
Page custom ShowWhoFor LeaveWhoFor
!insertmacro MUI_PAGE_DIRECTORY
!define MUI_PAGE_CUSTOMFUNCTION_LEAVE AskToClose
!insertmacro MUI_PAGE_COMPONENTS
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
UninstPage custom un.ShowSettings un.LeaveSettings
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE English
!insertmacro MUI_LANGUAGE German
!insertmacro MUI_LANGUAGE French
!insertmacro SetupWords

; --- What the set-up and the uninstaller share ---

!macro HasOption OPTION RESULT
  ${GetParameters} $R0
  ClearErrors
  ${GetOptions} $R0 "${OPTION}" $R1
  ${If} ${Errors}
    StrCpy ${RESULT} 0
  ${Else}
    StrCpy ${RESULT} 1
  ${EndIf}
!macroend

!macro IsAdministrator RESULT
  UserInfo::GetAccountType
  Pop ${RESULT}
  ${If} ${RESULT} == "Admin"
    StrCpy ${RESULT} 1
  ${Else}
    StrCpy ${RESULT} 0
  ${EndIf}
!macroend

!macro SharedFunctions UN
; $0: how many programs run out of $INSTDIR. With $1 = 1 each is asked to end, as taskkill would ask:
; the window that listens for that is the program's own for the purpose.
Function ${UN}FindRunning
  StrCpy $0 0
  StrCpy $2 0
  ${Do}
    FindWindow $2 "StillpostTermination" "" 0 $2
    ${If} $2 == 0
      ${ExitDo}
    ${EndIf}
    System::Call 'user32::GetWindowThreadProcessId(p r2, *i .r3)'
    System::Call 'kernel32::OpenProcess(i 0x1000, i 0, i r3) p .r4'
    StrCpy $5 ""
    ${If} $4 != 0
      System::Call 'kernel32::QueryFullProcessImageNameW(p r4, i 0, w .r5, *i ${NSIS_MAX_STRLEN})'
      System::Call 'kernel32::CloseHandle(p r4)'
    ${EndIf}
    ${If} $5 == "${PROGRAM}"
      IntOp $0 $0 + 1
      ${If} $1 == 1
        System::Call 'user32::PostMessageW(p r2, i ${WM_CLOSE}, p 0, p 0)'
      ${EndIf}
    ${EndIf}
  ${Loop}
FunctionEnd

; Ends with the program's file free to be replaced, or ends the set-up.
Function ${UN}CloseRunning
  ${Do}
    StrCpy $1 1
    Call ${UN}FindRunning
    ${If} $0 > 0
      StrCpy $WasRunning 1
      DetailPrint "$(Closing)"
    ${EndIf}
    ${For} $6 1 150 ; half a minute
      ${IfNot} ${FileExists} "${PROGRAM}"
        Return
      ${EndIf}
      ClearErrors
      FileOpen $7 "${PROGRAM}" a
      ${IfNot} ${Errors}
        FileClose $7
        Return
      ${EndIf}
      Sleep 200
    ${Next}
    MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "$(StillRunning)" /SD IDCANCEL IDRETRY +3
    SetErrorLevel 3
    Abort "$(StillRunning)"
  ${Loop}
FunctionEnd

; $0: 1 where the system starts this program with the user's session.
Function ${UN}StartsWithWindows
  ReadRegStr $0 HKCU "${RUN_KEY}" "Stillpost"
  StrLen $1 '"${PROGRAM}"'
  StrCpy $0 $0 $1
  ${If} $0 == '"${PROGRAM}"'
    StrCpy $0 1
  ${Else}
    StrCpy $0 0
  ${EndIf}
FunctionEnd
!macroend
!insertmacro SharedFunctions ""
!insertmacro SharedFunctions "un."

; --- The set-up ---

Function ChooseFolder
  ${If} $NamedFolder != ""
    StrCpy $INSTDIR $NamedFolder
  ${ElseIf} $ForAll == 1
    ReadRegStr $INSTDIR HKLM "${UNINSTALL_KEY}" "InstallLocation"
    ${If} $INSTDIR == ""
      StrCpy $INSTDIR "$PROGRAMFILES64\Stillpost"
    ${EndIf}
  ${Else}
    ReadRegStr $INSTDIR HKCU "${UNINSTALL_KEY}" "InstallLocation"
    ${If} $INSTDIR == ""
      StrCpy $INSTDIR "$LOCALAPPDATA\Programs\Stillpost"
    ${EndIf}
  ${EndIf}
FunctionEnd

Function ShowWhoFor
  !insertmacro MUI_HEADER_TEXT "$(WhoForTitle)" "$(WhoForSubtitle)"
  nsDialogs::Create 1018
  Pop $0
  ${NSD_CreateRadioButton} 0 10u 100% 12u "$(ForMe)"
  Pop $OneUser
  ${NSD_CreateLabel} 12u 24u 95% 24u "$(ForMeMore)"
  Pop $0
  ${NSD_CreateRadioButton} 0 56u 100% 12u "$(ForEverybody)"
  Pop $AllUsers
  ${NSD_CreateLabel} 12u 70u 95% 24u "$(ForEverybodyMore)"
  Pop $0
  ${If} $ForAll == 1
    ${NSD_Check} $AllUsers
    ${NSD_SetFocus} $AllUsers
  ${Else}
    ${NSD_Check} $OneUser
    ${NSD_SetFocus} $OneUser
  ${EndIf}
  nsDialogs::Show
FunctionEnd

Function LeaveWhoFor
  StrCpy $0 $ForAll
  ${NSD_GetState} $AllUsers $ForAll
  ${If} $0 != $ForAll
    StrCpy $NamedFolder ""
    Call ChooseFolder
  ${EndIf}
FunctionEnd

Function AskToClose
  StrCpy $1 0
  Call FindRunning
  ${If} $0 > 0
    MessageBox MB_OKCANCEL|MB_ICONQUESTION "$(AskToCloseText)" IDOK +2
    Abort
  ${EndIf}
FunctionEnd

Function InstallHere
  Call CloseRunning
  ; Files that this version no longer has.
  ${If} ${FileExists} "$INSTDIR\uninstall.exe"
    ExecWait '"$INSTDIR\uninstall.exe" /S /Upgrade _?=$INSTDIR'
  ${EndIf}
  !insertmacro InstallFiles
  SetOutPath "$INSTDIR"
  WriteUninstaller "$INSTDIR\uninstall.exe"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "DisplayName" "Stillpost"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION}"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "DisplayIcon" "${PROGRAM}"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "Publisher" "The Stillpost developers"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "InstallLocation" "$INSTDIR"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\uninstall.exe"'
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "Language" "$LANGUAGE"
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "EstimatedSize" "${KILOBYTES}"
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "NoModify" 1
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "NoRepair" 1
FunctionEnd

; What can be chosen; the work follows in one section, in its order.
Section "Stillpost" SecProgram
  SectionIn RO
  AddSize ${KILOBYTES}
SectionEnd

Section "$(StartMenu)" SecMenu
SectionEnd

Section /o "$(StartWithWindows)" SecStart
SectionEnd

Section "-Files"
  !insertmacro IsAdministrator $0
  ${If} $ForAll == 0
  ${OrIf} $0 == 1
    ${If} $ForAll == 1
      SetShellVarContext all
    ${EndIf}
    Call InstallHere
    ${If} ${SectionIsSelected} ${SecMenu}
      CreateShortcut "$SMPROGRAMS\Stillpost.lnk" "${PROGRAM}"
    ${Else}
      Delete "$SMPROGRAMS\Stillpost.lnk"
    ${EndIf}
    SetShellVarContext current
  ${Else}
    ; What follows is this user's, so only this part runs with other rights.
    StrCpy $1 0
    Call FindRunning
    ${If} $0 > 0
      StrCpy $WasRunning 1
    ${EndIf}
    StrCpy $0 ""
    ${IfNot} ${SectionIsSelected} ${SecMenu}
      StrCpy $0 "/NoStartMenu"
    ${EndIf}
    ClearErrors
    ExecShellWait "runas" "$EXEPATH" "/S /Inner /AllUsers $0 /D=$INSTDIR"
    ReadRegStr $1 HKLM "${UNINSTALL_KEY}" "DisplayVersion"
    ${If} ${Errors}
    ${OrIf} $1 != "${VERSION}"
    ${OrIfNot} ${FileExists} "${PROGRAM}"
      SetErrorLevel 4
      Abort "$(NotAllowed)"
    ${EndIf}
  ${EndIf}
SectionEnd

Section "-UsersOwn"
  ${If} $Inner == 1
    Return
  ${EndIf}
  Call StartsWithWindows ; with whatever arguments the user has given it
  ${If} ${SectionIsSelected} ${SecStart}
    ${If} $0 == 0
      WriteRegStr HKCU "${RUN_KEY}" "Stillpost" '${RUN_LINE}'
    ${EndIf}
  ${ElseIf} $0 == 1
    DeleteRegValue HKCU "${RUN_KEY}" "Stillpost"
  ${EndIf}
  ; Nobody is there to start it again.
  ${If} ${Silent}
  ${AndIf} $WasRunning == 1
    Call StartProgram
  ${EndIf}
SectionEnd

!insertmacro MUI_FUNCTION_DESCRIPTION_BEGIN
  !insertmacro MUI_DESCRIPTION_TEXT ${SecProgram} "$(ProgramMore)"
  !insertmacro MUI_DESCRIPTION_TEXT ${SecMenu} "$(StartMenuMore)"
  !insertmacro MUI_DESCRIPTION_TEXT ${SecStart} "$(StartWithWindowsMore)"
!insertmacro MUI_FUNCTION_DESCRIPTION_END

; One that was publishing goes on.
Function StartProgram
  SetOutPath "$INSTDIR"
  ${If} $WasRunning == 1
    Exec '${RUN_LINE}'
  ${Else}
    Exec '"${PROGRAM}"'
  ${EndIf}
FunctionEnd

Function .onInit
  SetRegView 64
  ${IfNot} ${AtLeastWin10}
    MessageBox MB_OK|MB_ICONSTOP "$(TooOld)" /SD IDOK
    SetErrorLevel 5
    Quit
  ${EndIf}
  StrCpy $NamedFolder $INSTDIR
  StrCpy $WasRunning 0
  !insertmacro HasOption "/Inner" $Inner
  !insertmacro HasOption "/AllUsers" $ForAll
  !insertmacro HasOption "/CurrentUser" $0
  ; Again as it was, where nothing is said.
  ${If} $ForAll == 0
  ${AndIf} $0 == 0
    ReadRegStr $1 HKCU "${UNINSTALL_KEY}" "InstallLocation"
    ReadRegStr $2 HKLM "${UNINSTALL_KEY}" "InstallLocation"
    ${If} $1 == ""
    ${AndIf} $2 != ""
      StrCpy $ForAll 1
    ${EndIf}
  ${EndIf}
  Call ChooseFolder
  !insertmacro HasOption "/NoStartMenu" $0
  ${If} $0 == 1
    !insertmacro UnselectSection ${SecMenu}
  ${EndIf}
  !insertmacro HasOption "/StartWithWindows" $0
  ${If} $0 == 0
    Call StartsWithWindows
  ${EndIf}
  ${If} $0 == 1
    !insertmacro SelectSection ${SecStart}
  ${EndIf}
  !insertmacro MUI_LANGDLL_DISPLAY
FunctionEnd

; --- The uninstaller ---

Function un.onInit
  SetRegView 64
  StrCpy $DeleteSettings 0
  StrCpy $WasRunning 0
  StrCpy $ForAll 0
  !insertmacro HasOption "/Upgrade" $Upgrade
  !insertmacro HasOption "/DeleteSettings" $DeleteSettings
  ReadRegStr $0 HKLM "${UNINSTALL_KEY}" "InstallLocation"
  ${If} $0 == $INSTDIR
    StrCpy $ForAll 1
    SetShellVarContext all
  ${EndIf}
  ReadRegDWORD $0 SHCTX "${UNINSTALL_KEY}" "Language"
  ${If} $0 != ""
  ${AndIf} $0 != 0
    StrCpy $LANGUAGE $0
  ${EndIf}
  !insertmacro IsAdministrator $0
  ${If} $ForAll == 1
  ${AndIf} $0 == 0
    ${GetParameters} $R0
    ExecShell "runas" "$INSTDIR\uninstall.exe" "$R0"
    Quit
  ${EndIf}
FunctionEnd

Function un.ShowSettings
  !insertmacro MUI_HEADER_TEXT "$(RemoveTitle)" "$(RemoveSubtitle)"
  nsDialogs::Create 1018
  Pop $0
  ${NSD_CreateLabel} 0 0 100% 36u "$(RemoveText)"
  Pop $0
  ${NSD_CreateCheckbox} 0 46u 100% 12u "$(DeleteSettingsText)"
  Pop $DeleteBox
  ${NSD_CreateLabel} 12u 60u 95% 36u "$(DeleteSettingsMore)"
  Pop $0
  GetDlgItem $0 $HWNDPARENT 1
  SendMessage $0 ${WM_SETTEXT} 0 "STR:$(RemoveButton)"
  nsDialogs::Show
FunctionEnd

Function un.LeaveSettings
  ${NSD_GetState} $DeleteBox $DeleteSettings
  StrCpy $1 0
  Call un.FindRunning
  ${If} $0 > 0
    MessageBox MB_OKCANCEL|MB_ICONQUESTION "$(AskToCloseText)" IDOK +2
    Abort
  ${EndIf}
FunctionEnd

; Of the program folder $0. By name, because pictures and films may lie there too.
Function un.DeleteSettings
  Delete "$0\ftpOptions.ini*"
  Delete "$0\stillpost.log*"
  Delete "$0\stillpost.lock"
  Delete "$0\last24hours.bin"
  Delete "$0\known_hosts"
  Delete "$0\dirxca.dat"
  RMDir /r "$0\work"
  RMDir /r "$0\dayfilm"
  RMDir "$0"
FunctionEnd

; And of those of the cameras that were added to it.
Function un.DeleteSettingsAndCameras
  StrCpy $1 "$0"
  FindFirst $2 $3 "$1\cameras\*"
  ${DoWhile} $3 != ""
    ${If} $3 != "."
    ${AndIf} $3 != ".."
      StrCpy $0 "$1\cameras\$3"
      Call un.DeleteSettings
    ${EndIf}
    FindNext $2 $3
  ${Loop}
  FindClose $2
  RMDir "$1\cameras"
  StrCpy $0 "$1"
  Call un.DeleteSettings
FunctionEnd

Section "Uninstall"
  Call un.CloseRunning
  !insertmacro RemoveFiles
  ${If} $Upgrade == 0
    Delete "$INSTDIR\uninstall.exe"
    Delete "$SMPROGRAMS\Stillpost.lnk"
    DeleteRegKey SHCTX "${UNINSTALL_KEY}"
    Call un.StartsWithWindows
    ${If} $0 == 1
      DeleteRegValue HKCU "${RUN_KEY}" "Stillpost"
    ${EndIf}
    ${If} $DeleteSettings == 1
      SetShellVarContext current
      StrCpy $0 "$INSTDIR"
      Call un.DeleteSettingsAndCameras
      StrCpy $0 "$APPDATA\stillpost"
      Call un.DeleteSettingsAndCameras
      DeleteRegKey HKCU "Software\Stillpost"
    ${EndIf}
    RMDir "$INSTDIR"
  ${EndIf}
SectionEnd
