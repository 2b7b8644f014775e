; The Windows installer, for all users or for a single one without administrator rights. make_setup.py calls the compiler with
; VERSION, ICON, PICTURE, OUT and FILES (a script that it generates, with the files of each component). QUICK reduces the
; compression to save time.
; SPDX-License-Identifier: GPL-3.0-or-later
Unicode true
Target amd64-unicode
!ifdef QUICK
  SetCompressor /FINAL zlib
!else
  SetCompressor /FINAL /SOLID lzma
  SetCompressorDictSize 32
!endif
SetDateSave off  ; The files' times on this machine would change the installer's bytes.
ManifestSupportedOS Win10
ManifestDPIAware true
ManifestLongPathAware true
Name "Sivray"
BrandingText "Sivray ${VERSION}"
OutFile "${OUT}"
ShowInstDetails nevershow
ShowUninstDetails nevershow

!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\Sivray"
; Exit codes are Windows error codes.
!define ERROR_FILE_NOT_FOUND 2
!define ERROR_BUSY 170
!define ERROR_ELEVATION_REQUIRED 740

; "For all users" needs administrator rights; users without them are not asked and install for themselves.
!define MULTIUSER_EXECUTIONLEVEL Highest
!define MULTIUSER_MUI
!define MULTIUSER_INSTALLMODE_COMMANDLINE
!define MULTIUSER_USE_PROGRAMFILES64
!define MULTIUSER_INSTALLMODE_INSTDIR Sivray
!define MULTIUSER_INSTALLMODE_DEFAULT_REGISTRY_KEY "${UNINSTALL_KEY}"
!define MULTIUSER_INSTALLMODE_DEFAULT_REGISTRY_VALUENAME "InstallLocation"
!define MULTIUSER_INSTALLMODE_FUNCTION chooseFolders
!define MULTIUSER_INIT_TEXT_ALLUSERSNOTPOSSIBLE "$(NEEDS_ADMINISTRATOR)"
!include MultiUser.nsh
!include MUI2.nsh
!include LogicLib.nsh
!include FileFunc.nsh
!include Sections.nsh
!include WinVer.nsh
!include StrFunc.nsh
!include "${FILES}"

Var GivenFolder   ; From the command line.
Var Common        ; Holds the folders VST3, CLAP and Tesh.
Var Vst2Folder
Var OwnVst2Folder ; 1 if the installer has created it.
Var Components    ; The installed components, each preceded by a comma.

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_WELCOMEFINISHPAGE_BITMAP "${PICTURE}"
!define MUI_FINISHPAGE_RUN
!define MUI_FINISHPAGE_RUN_FUNCTION startProgram

!insertmacro MUI_PAGE_WELCOME
!insertmacro MULTIUSER_PAGE_INSTALLMODE
!insertmacro MUI_PAGE_COMPONENTS
!insertmacro MUI_PAGE_DIRECTORY
!define MUI_PAGE_CUSTOMFUNCTION_PRE skipUnlessVst2
!define MUI_DIRECTORYPAGE_VARIABLE $Vst2Folder
!define MUI_PAGE_HEADER_TEXT "$(VST2_TITLE)"
!define MUI_PAGE_HEADER_SUBTEXT "$(VST2_SUBTITLE)"
!define MUI_DIRECTORYPAGE_TEXT_TOP "$(VST2_TEXT)"
!define MUI_DIRECTORYPAGE_TEXT_DESTINATION "$(VST2_FOLDER)"
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!define MUI_PAGE_CUSTOMFUNCTION_SHOW hideStartUnlessProgram
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE English
!insertmacro MUI_LANGUAGE German
!insertmacro MUI_LANGUAGE Japanese
!include texts.nsh

VIProductVersion "${VERSION}.0"
VIFileVersion "${VERSION}.0"
VIAddVersionKey /LANG=${LANG_ENGLISH} ProductName "Sivray"
VIAddVersionKey /LANG=${LANG_ENGLISH} ProductVersion "${VERSION}"
VIAddVersionKey /LANG=${LANG_ENGLISH} FileVersion "${VERSION}"
VIAddVersionKey /LANG=${LANG_ENGLISH} FileDescription "Installs Sivray, a drum module"
VIAddVersionKey /LANG=${LANG_ENGLISH} CompanyName "TESH"
VIAddVersionKey /LANG=${LANG_ENGLISH} LegalCopyright "(C) 2026 The authors of Sivray. GNU General Public License, version 3 or later"

; Jumps to `busy` if a program has the file open or loaded.
!macro RefuseBusy file
  ${If} ${FileExists} "${file}"
    ClearErrors
    FileOpen $0 "${file}" a
    IfErrors busy
    FileClose $0
  ${EndIf}
!macroend

; Removes the files of the last installation in this mode, which may be of another version.
Section "-before"
  ReadRegStr $0 SHCTX "${UNINSTALL_KEY}" InstallLocation
  ${If} $0 != ""
  ${AndIf} ${FileExists} "$0\Uninstall.exe"
    DetailPrint "$(REMOVES_OLD)"
    ExecWait '"$0\Uninstall.exe" /S _?=$0' $1
    ${If} $1 != 0
      MessageBox MB_OK|MB_ICONSTOP "$(IN_USE)" /SD IDOK
      SetErrorLevel ${ERROR_BUSY}
      Abort "$(IN_USE)"
    ${EndIf}
    Delete "$0\Uninstall.exe"
    RMDir "$0"
  ${EndIf}
  StrCpy $Components ""
  StrCpy $OwnVst2Folder 0
SectionEnd

Section "$(NAME_CONTENT)" Content
  SectionIn RO
  !insertmacro Install_Always "$INSTDIR"
  !insertmacro Install_Content "$Common"
SectionEnd

Section "$(NAME_PROGRAM)" Program
  !insertmacro Install_Program "$INSTDIR"
  SetOutPath "$INSTDIR"
  CreateShortcut "$SMPROGRAMS\Sivray.lnk" "$INSTDIR\Sivray.exe"
  StrCpy $Components "$Components,program"
SectionEnd

Section "$(NAME_VST3)" Vst3
  !insertmacro Install_Vst3 "$Common\VST3"
  ; The file manager reads desktop.ini only in folders with the system attribute.
  SetFileAttributes "$Common\VST3\Sivray.vst3\desktop.ini" HIDDEN|SYSTEM
  SetFileAttributes "$Common\VST3\Sivray.vst3" SYSTEM
  StrCpy $Components "$Components,vst3"
SectionEnd

Section "$(NAME_CLAP)" Clap
  !insertmacro Install_Clap "$Common\CLAP"
  StrCpy $Components "$Components,clap"
SectionEnd

Section "$(NAME_VST2)" Vst2
  ${IfNot} ${FileExists} "$Vst2Folder\*.*"
    StrCpy $OwnVst2Folder 1
  ${EndIf}
  !insertmacro Install_Vst2 "$Vst2Folder"
  !insertmacro Install_Presets "$INSTDIR"
  StrCpy $Components "$Components,vst2"
SectionEnd

; Adds the size of a component in KiB to $0, if it was installed.
!macro AddSize section
  ${If} ${SectionIsSelected} ${section}
    SectionGetSize ${section} $1
    IntOp $0 $0 + $1
  ${EndIf}
!macroend

Section "-after"
  SetOutPath "$INSTDIR"
  WriteUninstaller "$INSTDIR\Uninstall.exe"
  StrCpy $0 0
  !insertmacro AddSize ${Content}
  !insertmacro AddSize ${Program}
  !insertmacro AddSize ${Vst3}
  !insertmacro AddSize ${Clap}
  !insertmacro AddSize ${Vst2}
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" EstimatedSize $0
  WriteRegStr SHCTX "${UNINSTALL_KEY}" DisplayName "Sivray"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" DisplayIcon "$INSTDIR\Uninstall.exe"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" DisplayVersion "${VERSION}"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" Publisher "TESH"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" InstallLocation "$INSTDIR"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" UninstallString '"$INSTDIR\Uninstall.exe"'
  WriteRegStr SHCTX "${UNINSTALL_KEY}" QuietUninstallString '"$INSTDIR\Uninstall.exe" /S'
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" NoModify 1
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" NoRepair 1
  ; For the uninstaller.
  WriteRegStr SHCTX "${UNINSTALL_KEY}" Components "$Components"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" Vst2Folder "$Vst2Folder"
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" OwnVst2Folder "$OwnVst2Folder"
SectionEnd

!insertmacro MUI_FUNCTION_DESCRIPTION_BEGIN
  !insertmacro MUI_DESCRIPTION_TEXT ${Content} "$(ABOUT_CONTENT)"
  !insertmacro MUI_DESCRIPTION_TEXT ${Program} "$(ABOUT_PROGRAM)"
  !insertmacro MUI_DESCRIPTION_TEXT ${Vst3} "$(ABOUT_VST3)"
  !insertmacro MUI_DESCRIPTION_TEXT ${Clap} "$(ABOUT_CLAP)"
  !insertmacro MUI_DESCRIPTION_TEXT ${Vst2} "$(ABOUT_VST2)"
!insertmacro MUI_FUNCTION_DESCRIPTION_END

; Selects the component if the list in $1 names it, else deselects it.
!macro SelectNamed name section
  ${StrStr} $2 ",$1," ",${name},"
  ${If} $2 == ""
    !insertmacro UnselectSection ${section}
  ${Else}
    !insertmacro SelectSection ${section}
  ${EndIf}
!macroend

; The command line: /S, /AllUsers or /CurrentUser, /Components=program,vst3,clap,vst2, /Vst2=FOLDER, /Lang=1033, 1031 or 1041,
; and last /D=FOLDER without quotes.
Function .onInit
  ${IfNot} ${AtLeastWin10}
    MessageBox MB_OK|MB_ICONSTOP "$(NEEDS_WINDOWS_10)" /SD IDOK
    Quit
  ${EndIf}
  StrCpy $GivenFolder $INSTDIR
  ${GetParameters} $0
  ${GetOptions} $0 "/Lang=" $1
  ${If} $1 != ""
    StrCpy $LANGUAGE $1
  ${EndIf}
  ${StrStr} $1 $0 "/AllUsers"
  ${If} $1 != ""
  ${AndIf} ${Silent}
    UserInfo::GetAccountType
    Pop $1
    ${If} $1 != Admin
      SetErrorLevel ${ERROR_ELEVATION_REQUIRED}
      Quit
    ${EndIf}
  ${EndIf}
  !insertmacro MULTIUSER_INIT
  ${GetParameters} $0
  ClearErrors
  ${GetOptions} $0 "/Components=" $1
  ${IfNot} ${Errors}
    !insertmacro SelectNamed program ${Program}
    !insertmacro SelectNamed vst3 ${Vst3}
    !insertmacro SelectNamed clap ${Clap}
    !insertmacro SelectNamed vst2 ${Vst2}
  ${EndIf}
FunctionEnd

; Called when the mode is chosen: sets its folders, unless the command line does.
Function chooseFolders
  ${If} $MultiUser.InstallMode == AllUsers
    StrCpy $Common $COMMONFILES64
    StrCpy $Vst2Folder "$PROGRAMFILES64\VstPlugins"
  ${Else}
    StrCpy $Common "$LOCALAPPDATA\Programs\Common"
    StrCpy $Vst2Folder "$LOCALAPPDATA\Programs\VstPlugins"
  ${EndIf}
  ReadRegStr $0 SHCTX "Software\VST" VSTPluginsPath  ; Where hosts look for plug-ins.
  ${If} $0 != ""
    StrCpy $Vst2Folder $0
  ${EndIf}
  ReadRegStr $0 SHCTX "${UNINSTALL_KEY}" InstallLocation
  ${If} $0 != ""
    StrCpy $INSTDIR $0
    ReadRegStr $Vst2Folder SHCTX "${UNINSTALL_KEY}" Vst2Folder
  ${EndIf}
  ${If} $GivenFolder != ""
    StrCpy $INSTDIR $GivenFolder
  ${EndIf}
  ${GetParameters} $0
  ${GetOptions} $0 "/Vst2=" $0
  ${If} $0 != ""
    StrCpy $Vst2Folder $0
  ${EndIf}
FunctionEnd

Function skipUnlessVst2
  ${IfNot} ${SectionIsSelected} ${Vst2}
    Abort
  ${EndIf}
FunctionEnd

Function hideStartUnlessProgram
  ${IfNot} ${SectionIsSelected} ${Program}
    ${NSD_Uncheck} $mui.FinishPage.Run
    ShowWindow $mui.FinishPage.Run ${SW_HIDE}
  ${EndIf}
FunctionEnd

; Started by the file manager, so that it has no more rights than the user's other programs.
Function startProgram
  Exec '"$WINDIR\explorer.exe" "$INSTDIR\Sivray.exe"'
FunctionEnd

; The mode of the installation whose registry record names this folder.
Function un.onInit
  !insertmacro MULTIUSER_UNINIT
  ReadRegStr $0 HKCU "${UNINSTALL_KEY}" InstallLocation
  ReadRegStr $1 HKLM "${UNINSTALL_KEY}" InstallLocation
  ${If} $0 == $INSTDIR
    Call un.MultiUser.InstallMode.CurrentUser
    StrCpy $Common "$LOCALAPPDATA\Programs\Common"
  ${ElseIf} $1 != $INSTDIR
    MessageBox MB_OK|MB_ICONSTOP "$(NO_RECORD)" /SD IDOK
    SetErrorLevel ${ERROR_FILE_NOT_FOUND}
    Quit
  ${ElseIf} $MultiUser.Privileges != Admin
    MessageBox MB_OK|MB_ICONSTOP "$(NEEDS_ADMINISTRATOR)" /SD IDOK
    SetErrorLevel ${ERROR_ELEVATION_REQUIRED}
    Quit
  ${Else}
    Call un.MultiUser.InstallMode.AllUsers
    StrCpy $Common $COMMONFILES64
  ${EndIf}
  ReadRegStr $Components SHCTX "${UNINSTALL_KEY}" Components
  ReadRegStr $Vst2Folder SHCTX "${UNINSTALL_KEY}" Vst2Folder
  ReadRegDWORD $OwnVst2Folder SHCTX "${UNINSTALL_KEY}" OwnVst2Folder
FunctionEnd

!macro IfInstalled name
  ${UnStrStr} $0 "$Components," ",${name},"
  ${If} $0 != ""
!macroend

Section Uninstall
  !insertmacro RefuseBusy "$INSTDIR\Sivray.exe"
  !insertmacro RefuseBusy "$INSTDIR\sivray-content.exe"
  !insertmacro RefuseBusy "$Common\VST3\Sivray.vst3\Contents\x86_64-win\Sivray.vst3"
  !insertmacro RefuseBusy "$Common\CLAP\Sivray.clap"
  !insertmacro RefuseBusy "$Vst2Folder\Sivray.dll"
  Goto free
busy:
  MessageBox MB_OK|MB_ICONSTOP "$(IN_USE)" /SD IDOK
  SetErrorLevel ${ERROR_BUSY}
  Quit
free:
  SetOutPath "$TEMP"  ; A program's working folder cannot be removed.
  !insertmacro IfInstalled program
    Delete "$SMPROGRAMS\Sivray.lnk"
    !insertmacro Remove_Program "$INSTDIR"
  ${EndIf}
  !insertmacro IfInstalled vst3
    SetFileAttributes "$Common\VST3\Sivray.vst3" NORMAL
    !insertmacro Remove_Vst3 "$Common\VST3"
  ${EndIf}
  !insertmacro IfInstalled clap
    !insertmacro Remove_Clap "$Common\CLAP"
  ${EndIf}
  !insertmacro IfInstalled vst2
    !insertmacro Remove_Vst2 "$Vst2Folder"
    !insertmacro Remove_Presets "$INSTDIR"
    ${If} $OwnVst2Folder = 1
      RMDir "$Vst2Folder"
    ${EndIf}
  ${EndIf}
  !insertmacro Remove_Content "$Common"
  !insertmacro Remove_Always "$INSTDIR"
  Delete "$INSTDIR\Uninstall.exe"
  ; Removes folders that are empty now.
  RMDir "$INSTDIR"
  RMDir "$Common\VST3"
  RMDir "$Common\CLAP"
  RMDir "$Common"
  ${If} $MultiUser.InstallMode == CurrentUser
    RMDir "$LOCALAPPDATA\Programs"
  ${EndIf}
  DeleteRegKey SHCTX "${UNINSTALL_KEY}"
SectionEnd
