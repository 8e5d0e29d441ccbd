; The installer: for one user, without the rights of an administrator. What it puts on the machine
; the uninstaller takes away; settings, card sets, decks and records are the user's own and stay.
Unicode true
Target amd64-unicode
ManifestDPIAware true
ManifestSupportedOS Win10
RequestExecutionLevel user
SetCompressor /SOLID lzma

!include MUI2.nsh

Name "Packwise"
OutFile "${SETUP}"
InstallDir "$LOCALAPPDATA\Programs\Packwise"
!define REGISTRY "Software\Microsoft\Windows\CurrentVersion\Uninstall\Packwise"
InstallDirRegKey HKCU "${REGISTRY}" "InstallLocation"
BrandingText "Packwise ${VERSION}"

VIProductVersion "${NUMBERS}"
VIFileVersion "${NUMBERS}"
VIAddVersionKey "ProductName" "Packwise"
VIAddVersionKey "FileDescription" "Installs Packwise"
VIAddVersionKey "FileVersion" "${VERSION}"
VIAddVersionKey "ProductVersion" "${VERSION}"
VIAddVersionKey "LegalCopyright" "Free software; see LICENSE"

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_FINISHPAGE_RUN "$INSTDIR\packwise.exe"
!define MUI_FINISHPAGE_RUN_TEXT "Start Packwise"
!insertmacro MUI_PAGE_WELCOME
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"

; A file of a program that runs cannot be written or deleted.
!macro STOP_IF_RUNNING
    ${If} ${FileExists} "$INSTDIR\packwise.exe"
        ClearErrors
        FileOpen $0 "$INSTDIR\packwise.exe" a
        ${If} ${Errors}
            MessageBox MB_OK|MB_ICONEXCLAMATION "Packwise is running. Close it, then try again." /SD IDOK
            SetErrorLevel 2
            Quit
        ${EndIf}
        FileClose $0
    ${EndIf}
!macroend

Section "Packwise"
    !insertmacro STOP_IF_RUNNING
    ; An older version may have had files that this one does not have.
    ReadRegStr $0 HKCU "${REGISTRY}" "InstallLocation"
    ${If} $0 != ""
    ${AndIf} ${FileExists} "$0\uninstall.exe"
        ExecWait '"$0\uninstall.exe" /S _?=$0'
        Delete "$0\uninstall.exe"
        RMDir "$0"
    ${EndIf}

    SetOutPath "$INSTDIR"
    File /r "${STAGE}/*"
    WriteUninstaller "$INSTDIR\uninstall.exe"

    CreateDirectory "$SMPROGRAMS\Packwise"
    ; The folder in which a program starts is that of its shortcut.
    CreateShortCut "$SMPROGRAMS\Packwise\Packwise.lnk" "$INSTDIR\packwise.exe"
    CreateShortCut "$SMPROGRAMS\Packwise\Read me.lnk" "$INSTDIR\README.txt"
    SetOutPath "$DOCUMENTS"
    CreateShortCut "$SMPROGRAMS\Packwise\Packwise commands.lnk" "$SYSDIR\cmd.exe" \
        '/k "set PATH=$INSTDIR;%PATH%"' "$INSTDIR\packwise.exe"
    SetOutPath "$INSTDIR"

    WriteRegStr HKCU "${REGISTRY}" "DisplayName" "Packwise"
    WriteRegStr HKCU "${REGISTRY}" "DisplayVersion" "${VERSION}"
    WriteRegStr HKCU "${REGISTRY}" "DisplayIcon" "$INSTDIR\packwise.exe"
    WriteRegStr HKCU "${REGISTRY}" "Publisher" "the Packwise developers"
    WriteRegStr HKCU "${REGISTRY}" "InstallLocation" "$INSTDIR"
    WriteRegStr HKCU "${REGISTRY}" "UninstallString" '"$INSTDIR\uninstall.exe"'
    WriteRegStr HKCU "${REGISTRY}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
    WriteRegDWORD HKCU "${REGISTRY}" "EstimatedSize" ${SIZE}
    WriteRegDWORD HKCU "${REGISTRY}" "NoModify" 1
    WriteRegDWORD HKCU "${REGISTRY}" "NoRepair" 1
SectionEnd

Section "Uninstall"
    !insertmacro STOP_IF_RUNNING
    !include "${REMOVALS}"
    Delete "$INSTDIR\uninstall.exe"
    RMDir "$INSTDIR"
    Delete "$SMPROGRAMS\Packwise\Packwise.lnk"
    Delete "$SMPROGRAMS\Packwise\Read me.lnk"
    Delete "$SMPROGRAMS\Packwise\Packwise commands.lnk"
    RMDir "$SMPROGRAMS\Packwise"
    DeleteRegKey HKCU "${REGISTRY}"
SectionEnd
