; The installer of the panel. packaging/windows/package defines
;   VERSION    "4.00.0064"
;   NUMBERS    the same version as "4.0.64.0"
;   PROGRAMS   the folder with tamber-panel.exe and licences
;   PICTURES   the folder with tamber.ico and installer.bmp
;   COPYRIGHT  the copyright line
;   OUTPUT     the installer to write
; With /S the installer asks no questions. It exits with 2 if the panel is running.

Target amd64-unicode ; like the panel itself
SetCompressor /SOLID lzma
!include "MUI2.nsh"
!include "FileFunc.nsh"

!define TITLE "NORVEL Tamber Settings Panel"
!define PROGRAM "tamber-panel.exe"
!define MENU "$SMPROGRAMS\NORVEL"
!define LINK "${MENU}\Tamber Settings Panel.lnk"
!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\NORVEL Tamber"
!define DEFAULT_FOLDER "$PROGRAMFILES64\NORVEL\Tamber"

Name "${TITLE}"
BrandingText "${TITLE} ${VERSION}"
OutFile "${OUTPUT}"
InstallDir "${DEFAULT_FOLDER}"
RequestExecutionLevel admin
ManifestDPIAware true
ManifestSupportedOS all
AllowSkipFiles off
ShowInstDetails nevershow
ShowUninstDetails nevershow

VIProductVersion "${NUMBERS}"
VIAddVersionKey "CompanyName" "NORVEL"
VIAddVersionKey "FileDescription" "Setup of the ${TITLE}"
VIAddVersionKey "FileVersion" "${VERSION}"
VIAddVersionKey "LegalCopyright" "${COPYRIGHT}"
VIAddVersionKey "ProductName" "NORVEL Tamber"
VIAddVersionKey "ProductVersion" "${VERSION}"

!define MUI_ICON "${PICTURES}/tamber.ico"
!define MUI_UNICON "${PICTURES}/tamber.ico"
!define MUI_WELCOMEFINISHPAGE_BITMAP "${PICTURES}/installer.bmp"
!define MUI_WELCOMEPAGE_TEXT "This installs version ${VERSION} on your computer.$\r$\n$\r$\n\
It replaces an older version and keeps your settings and scenes.$\r$\n$\r$\n\
Please close the panel before you continue."
!insertmacro MUI_PAGE_WELCOME
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"

; Aborts if the panel is running: the file of a running program cannot be opened for writing.
; Nothing is changed before this check.
!macro RequireClosedPanel
    ${Do}
        ${IfNot} ${FileExists} "$INSTDIR\${PROGRAM}"
            ${Break}
        ${EndIf}
        ClearErrors
        FileOpen $0 "$INSTDIR\${PROGRAM}" a
        ${IfNot} ${Errors}
            FileClose $0
            ${Break}
        ${EndIf}
        ${If} ${Cmd} `MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION \
            "The Tamber Settings Panel is running.$\r$\n$\r$\nPlease close it, then choose Retry." \
            /SD IDCANCEL IDCANCEL`
            SetErrorLevel 2
            Abort "The Tamber Settings Panel is running. Nothing has been changed."
        ${EndIf}
    ${Loop}
!macroend

; An upgrade uses the folder of the older version.
Function .onInit
    ReadRegStr $0 HKLM "${UNINSTALL_KEY}" "InstallLocation"
    ${If} $0 != ""
    ${AndIf} $INSTDIR == "${DEFAULT_FOLDER}"
        StrCpy $INSTDIR $0
    ${EndIf}
FunctionEnd

Section
    SetShellVarContext all
    !insertmacro RequireClosedPanel
    SetOutPath "$INSTDIR"
    File "${PROGRAMS}/${PROGRAM}"
    SetOutPath "$INSTDIR\licences"
    File "${PROGRAMS}/licences/*.txt"
    SetOutPath "$INSTDIR" ; the working folder of the shortcut
    WriteUninstaller "$INSTDIR\uninstall.exe"
    CreateDirectory "${MENU}"
    CreateShortCut "${LINK}" "$INSTDIR\${PROGRAM}"

    WriteRegStr HKLM "${UNINSTALL_KEY}" "DisplayName" "${TITLE}"
    WriteRegStr HKLM "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION}"
    WriteRegStr HKLM "${UNINSTALL_KEY}" "DisplayIcon" "$INSTDIR\${PROGRAM},0"
    WriteRegStr HKLM "${UNINSTALL_KEY}" "Publisher" "NORVEL"
    WriteRegStr HKLM "${UNINSTALL_KEY}" "URLInfoAbout" "https://www.norvel.example"
    WriteRegStr HKLM "${UNINSTALL_KEY}" "InstallLocation" "$INSTDIR"
    WriteRegStr HKLM "${UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\uninstall.exe"'
    WriteRegStr HKLM "${UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
    WriteRegDWORD HKLM "${UNINSTALL_KEY}" "NoModify" 1
    WriteRegDWORD HKLM "${UNINSTALL_KEY}" "NoRepair" 1
    ${GetSize} "$INSTDIR" "/S=0K" $0 $1 $2
    WriteRegDWORD HKLM "${UNINSTALL_KEY}" "EstimatedSize" $0
SectionEnd

Function un.onInit
    SetShellVarContext all
FunctionEnd

; The user's settings stay, and so do the files of other installers in the same folder.
Section "Uninstall"
    !insertmacro RequireClosedPanel
    Delete "$INSTDIR\${PROGRAM}"
    Delete "$INSTDIR\licences\*.txt"
    RMDir "$INSTDIR\licences"
    Delete "$INSTDIR\uninstall.exe"
    RMDir "$INSTDIR"
    RMDir "$PROGRAMFILES64\NORVEL"
    Delete "${LINK}"
    RMDir "${MENU}"
    DeleteRegKey HKLM "${UNINSTALL_KEY}"
SectionEnd
