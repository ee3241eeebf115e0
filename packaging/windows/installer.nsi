; The installer for Windows. Needs no administrator rights, because it installs for the current user only.
;
;     quillory-<version>-windows-x64-setup.exe [/S] [/CONTEXTMENU=0|1] [/D=FOLDER]
;
; /S shows no window. /CONTEXTMENU=1 adds the entry to the context menu of folders; 0 removes it. Without this argument,
; the entry stays as it is. /D comes last and takes no quotes, even if the folder contains spaces.
; Exit codes: 0 for success, 1 if the user cancels, 2 for a failure.
;
; build-installer.sh runs makensis with these definitions:
;   VERSION  three numbers        CONTENT  file with the macros InstallContent and RemoveContent, one line for each file
;   OUTPUT   installer to write   SIZE     size of the content in KiB
;   ICONS    folder with quillory.ico and installer.bmp

Target amd64-unicode
SetCompressor /SOLID lzma
; Installed files get the time of the installation. The installer contains no file times, so builds are reproducible.
SetDateSave off

!include MUI2.nsh
!include FileFunc.nsh
!include WinVer.nsh

!define PROGRAM "quillory.exe"
!define MENU_TEXT "Find duplicates with Quillory"
!define MENU_KEY "Software\Classes\Directory\shell\Quillory"
!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\Quillory"
!define OLDEST_BUILD 17763 ; Windows 10 1809, the oldest that Qt 6 supports

!include "${CONTENT}"

Name "Quillory"
Caption "Quillory ${VERSION} Setup"
BrandingText "Quillory ${VERSION}"
OutFile "${OUTPUT}"
RequestExecutionLevel user
InstallDir "$LOCALAPPDATA\Programs\Quillory"
InstallDirRegKey HKCU "${UNINSTALL_KEY}" "InstallLocation"
AllowSkipFiles off
ManifestDPIAware true

VIProductVersion "${VERSION}.0"
VIFileVersion "${VERSION}.0"
VIAddVersionKey "CompanyName" "The Quillory authors"
VIAddVersionKey "FileDescription" "Quillory Setup"
VIAddVersionKey "FileVersion" "${VERSION}"
VIAddVersionKey "LegalCopyright" "© 2026 The Quillory authors"
VIAddVersionKey "ProductName" "Quillory"
VIAddVersionKey "ProductVersion" "${VERSION}"

!define MUI_ICON "${ICONS}/quillory.ico"
!define MUI_UNICON "${ICONS}/quillory.ico"
!define MUI_WELCOMEFINISHPAGE_BITMAP "${ICONS}/installer.bmp"
!define MUI_ABORTWARNING
!define MUI_COMPONENTSPAGE_SMALLDESC
!define MUI_FINISHPAGE_RUN "$INSTDIR\${PROGRAM}"
!define MUI_FINISHPAGE_RUN_TEXT "Start Quillory"
!insertmacro MUI_PAGE_COMPONENTS
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"

; Runs the earlier uninstaller, because it knows which files its version has installed and where.
Function RemoveEarlierInstallation
  ReadRegStr $R0 HKCU "${UNINSTALL_KEY}" "InstallLocation"
  ${If} $R0 == ""
  ${OrIfNot} ${FileExists} "$R0\uninstall.exe"
    Return
  ${EndIf}
  retry:
  ; With _?=, the uninstaller does not start a copy of itself, so ExecWait waits until it has finished.
  ExecWait '"$R0\uninstall.exe" /S _?=$R0' $R1
  ${If} $R1 != 0
    MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION \
      "The earlier version in $R0 cannot be removed. Close Quillory and try again." /SD IDCANCEL IDRETRY retry
    Abort "The earlier version in $R0 cannot be removed."
  ${EndIf}
  Delete "$R0\uninstall.exe"
  RMDir "$R0"
FunctionEnd

Section "Quillory" SectionProgram
  SectionIn RO
  Call RemoveEarlierInstallation
  !insertmacro InstallContent
  SetOutPath "$INSTDIR"
  WriteUninstaller "$INSTDIR\uninstall.exe"
  CreateShortcut "$SMPROGRAMS\Quillory.lnk" "$INSTDIR\${PROGRAM}"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayName" "Quillory"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayIcon" "$INSTDIR\${PROGRAM}"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "Publisher" "The Quillory authors"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "URLInfoAbout" "https://www.quillory.example/"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\uninstall.exe"'
  WriteRegStr HKCU "${UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
  WriteRegDWORD HKCU "${UNINSTALL_KEY}" "EstimatedSize" ${SIZE}
  WriteRegDWORD HKCU "${UNINSTALL_KEY}" "NoModify" 1
  WriteRegDWORD HKCU "${UNINSTALL_KEY}" "NoRepair" 1
SectionEnd

Section /o "Entry in the context menu of folders" SectionContextMenu
  WriteRegStr HKCU "${MENU_KEY}" "" "${MENU_TEXT}"
  WriteRegStr HKCU "${MENU_KEY}" "Icon" "$INSTDIR\${PROGRAM}"
  WriteRegStr HKCU "${MENU_KEY}\command" "" '"$INSTDIR\${PROGRAM}" "%1"'
SectionEnd

!insertmacro MUI_FUNCTION_DESCRIPTION_BEGIN
  !insertmacro MUI_DESCRIPTION_TEXT ${SectionProgram} "The program, quillory-cli for terminals, and an entry in the Start menu."
  !insertmacro MUI_DESCRIPTION_TEXT ${SectionContextMenu} "Adds “${MENU_TEXT}” to the menu that a right click on a folder opens."
!insertmacro MUI_FUNCTION_DESCRIPTION_END

Function .onInit
  ${IfNot} ${AtLeastBuild} ${OLDEST_BUILD}
    MessageBox MB_OK|MB_ICONSTOP "Quillory needs Windows 10 (1809) or newer." /SD IDOK
    SetErrorLevel 2
    Abort
  ${EndIf}
  ${GetParameters} $R0
  ClearErrors
  ${GetOptions} $R0 "/CONTEXTMENU=" $R1
  ${If} ${Errors}
    ReadRegStr $R2 HKCU "${MENU_KEY}\command" ""
    StrCpy $R1 0
    ${If} $R2 != ""
      StrCpy $R1 1
    ${EndIf}
  ${EndIf}
  ${If} $R1 == 1
    !insertmacro SelectSection ${SectionContextMenu}
  ${ElseIf} $R1 != 0
    MessageBox MB_OK|MB_ICONSTOP "/CONTEXTMENU takes 0 or 1 (got: $R1)." /SD IDOK
    SetErrorLevel 2
    Abort
  ${EndIf}
FunctionEnd

; Windows does not allow writing to the file of a running program.
!macro AbortIfRunning FILE
  ${If} ${FileExists} "$INSTDIR\${FILE}"
    ClearErrors
    FileOpen $R0 "$INSTDIR\${FILE}" a
    ${If} ${Errors}
      MessageBox MB_OK|MB_ICONEXCLAMATION "${FILE} cannot be removed. Close Quillory and try again." /SD IDOK
      Abort "${FILE} cannot be removed."
    ${EndIf}
    FileClose $R0
  ${EndIf}
!macroend

; Removes the installed files one by one and only empty folders, so that files of the user stay.
Section "Uninstall"
  !insertmacro AbortIfRunning "${PROGRAM}"
  !insertmacro AbortIfRunning "quillory-cli.exe"
  ; Leaves $INSTDIR, because Windows cannot remove the current folder.
  SetOutPath "$TEMP"
  !insertmacro RemoveContent
  Delete "$INSTDIR\uninstall.exe"
  RMDir "$INSTDIR"
  Delete "$SMPROGRAMS\Quillory.lnk"
  DeleteRegKey HKCU "${UNINSTALL_KEY}"
  DeleteRegKey HKCU "${MENU_KEY}"
  DeleteRegKey /ifempty HKCU "Software\Classes\Directory\shell"
  DeleteRegKey /ifempty HKCU "Software\Classes\Directory"
SectionEnd
