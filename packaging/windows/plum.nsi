; The installer for Windows: for one user, without an administrator. Installed, Plum is a program folder of its own, so
; the apps and settings lie beside the program; an update and the removal leave them.
;   makensis -DVERSION=0.1.0 -DSOURCE=FOLDER -DFILES=files.nsh -DSTARTERS=starters.nsh -DOUTPUT=Plum-Setup.exe plum.nsi
; FOLDER is what tools/windows/layout made. files.nsh names its folders, deeper ones first, and its files, all but those
; of the starter apps, which starters.nsh names:
;   !insertmacro Folder "config\module\download"
;   !insertmacro Each "config\module\download\download.exe"
;   !insertmacro Starter "config\apps\hello" "main.wf"
; Silent: /S, with /AUTOSTART to start with Windows. The uninstaller: /S, with /LIBRARY to delete the apps too.

Target amd64-unicode
SetCompressor /SOLID lzma
SetDateSave off
ManifestDPIAware true
RequestExecutionLevel user

!include "MUI2.nsh"
!include "FileFunc.nsh"

!define UNINSTALL "Software\Microsoft\Windows\CurrentVersion\Uninstall\Plum"
!define RUN "Software\Microsoft\Windows\CurrentVersion\Run"
!define CLASSES "Software\Classes"

Name "Plum"
OutFile "${OUTPUT}"
InstallDir "$LOCALAPPDATA\Plum"
InstallDirRegKey HKCU "${UNINSTALL}" "InstallLocation"

VIProductVersion "${VERSION}.0"
VIFileVersion "${VERSION}.0"
VIAddVersionKey /LANG=0 "ProductName" "Plum"
VIAddVersionKey /LANG=0 "ProductVersion" "${VERSION}"
VIAddVersionKey /LANG=0 "FileDescription" "Plum's installer"
VIAddVersionKey /LANG=0 "FileVersion" "${VERSION}"
VIAddVersionKey /LANG=0 "LegalCopyright" "The Plum authors, MIT License"

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_COMPONENTSPAGE_NODESC
!define MUI_FINISHPAGE_RUN "$INSTDIR\plum.exe"
!define MUI_FINISHPAGE_RUN_NOTCHECKED

!insertmacro MUI_PAGE_COMPONENTS
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"
!insertmacro MUI_LANGUAGE "SimpChinese"

LangString AutostartName ${LANG_ENGLISH} "Start with Windows"
LangString AutostartName ${LANG_SIMPCHINESE} "开机时启动"
LangString AskLibrary ${LANG_ENGLISH} "Delete your apps and settings in $INSTDIR\config, too?"
LangString AskLibrary ${LANG_SIMPCHINESE} "是否同时删除 $INSTDIR\config 中的应用和设置？"

; A program that runs can be renamed, not overwritten: it goes on until it ends, and the next start is the new one.
!macro MoveAside FILE
    Delete "$INSTDIR\${FILE}.old"
    ${If} ${FileExists} "$INSTDIR\${FILE}"
        Delete "$INSTDIR\${FILE}"
        ${If} ${FileExists} "$INSTDIR\${FILE}"
            Rename "$INSTDIR\${FILE}" "$INSTDIR\${FILE}.old"
            Delete /REBOOTOK "$INSTDIR\${FILE}.old"
        ${EndIf}
    ${EndIf}
!macroend

!macro Install FILE
    !insertmacro MoveAside "${FILE}"
    File "/oname=${FILE}" "${SOURCE}\${FILE}"
!macroend

!macro Type ENDING NAME DESCRIPTION COMMAND
    WriteRegStr HKCU "${CLASSES}\${ENDING}" "" "${NAME}"
    WriteRegStr HKCU "${CLASSES}\${NAME}" "" "${DESCRIPTION}"
    WriteRegStr HKCU "${CLASSES}\${NAME}\DefaultIcon" "" "$INSTDIR\plum.exe,0"
    WriteRegStr HKCU "${CLASSES}\${NAME}\shell\open\command" "" `${COMMAND}`
!macroend

; Where another program has taken the ending since, it keeps it.
!macro NoType ENDING NAME
    ReadRegStr $0 HKCU "${CLASSES}\${ENDING}" ""
    ${If} $0 == "${NAME}"
        DeleteRegKey HKCU "${CLASSES}\${ENDING}"
    ${EndIf}
    DeleteRegKey HKCU "${CLASSES}\${NAME}"
!macroend

Section "-Plum"
    SetOutPath "$INSTDIR"
    !macro Folder NAME
        CreateDirectory "$INSTDIR\${NAME}"
    !macroend
    !macro Each FILE
        !insertmacro Install "${FILE}"
    !macroend
    !include "${FILES}"
    !macroundef Folder
    !macroundef Each

    ; Only a library that is made now: an app that the user deleted stays deleted.
    ${IfNot} ${FileExists} "$INSTDIR\config\apps\*.*"
        !macro Starter FOLDER FILE
            SetOutPath "$INSTDIR\${FOLDER}"
            File "${SOURCE}\${FOLDER}\${FILE}"
        !macroend
        !include "${STARTERS}"
        !macroundef Starter
        SetOutPath "$INSTDIR"
    ${EndIf}

    CreateShortcut "$SMPROGRAMS\Plum.lnk" "$INSTDIR\plum.exe"

    !insertmacro Type ".wf" "Plum.Script" "Plum script" '"$INSTDIR\plumkit.exe" open "%1"'
    !insertmacro Type ".wfp" "Plum.Package" "Plum package" '"$INSTDIR\plumkit.exe" open "%1"'

    WriteUninstaller "$INSTDIR\uninstall.exe"
    WriteRegStr HKCU "${UNINSTALL}" "DisplayName" "Plum"
    WriteRegStr HKCU "${UNINSTALL}" "DisplayVersion" "${VERSION}"
    WriteRegStr HKCU "${UNINSTALL}" "DisplayIcon" "$INSTDIR\plum.exe"
    WriteRegStr HKCU "${UNINSTALL}" "Publisher" "The Plum authors"
    WriteRegStr HKCU "${UNINSTALL}" "InstallLocation" "$INSTDIR"
    WriteRegStr HKCU "${UNINSTALL}" "UninstallString" '"$INSTDIR\uninstall.exe"'
    WriteRegStr HKCU "${UNINSTALL}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
    WriteRegDWORD HKCU "${UNINSTALL}" "NoModify" 1
    WriteRegDWORD HKCU "${UNINSTALL}" "NoRepair" 1
    ${GetSize} "$INSTDIR" "/S=0K" $0 $1 $2
    WriteRegDWORD HKCU "${UNINSTALL}" "EstimatedSize" $0
    System::Call 'shell32::SHChangeNotify(i 0x08000000, i 0, p 0, p 0)'
SectionEnd

Section /o "$(AutostartName)" Autostart
    WriteRegStr HKCU "${RUN}" "Plum" '"$INSTDIR\plum.exe"'
SectionEnd

Function .onInit
    ; An update keeps what was chosen before.
    ReadRegStr $2 HKCU "${RUN}" "Plum"
    ${GetParameters} $0
    ClearErrors
    ${GetOptions} $0 "/AUTOSTART" $1
    ${IfNot} ${Errors}
    ${OrIf} $2 != ""
        SectionSetFlags ${Autostart} ${SF_SELECTED}
    ${EndIf}
FunctionEnd

Section "Uninstall"
    !macro Each FILE
        !insertmacro MoveAside "${FILE}"
        Delete "$INSTDIR\${FILE}"
    !macroend
    !macro Folder NAME
    !macroend
    !include "${FILES}"
    !macroundef Each
    !macroundef Folder

    ${GetParameters} $0
    ClearErrors
    ${GetOptions} $0 "/LIBRARY" $1
    ${If} ${Errors}
        MessageBox MB_YESNO|MB_DEFBUTTON2|MB_ICONQUESTION "$(AskLibrary)" /SD IDNO IDYES library IDNO kept
    ${EndIf}
library:
    RMDir /r "$INSTDIR\config"
kept:
    ; Folders go when nothing is left in them.
    !macro Each FILE
    !macroend
    !macro Folder NAME
        RMDir "$INSTDIR\${NAME}"
    !macroend
    !include "${FILES}"
    !macroundef Each
    !macroundef Folder
    Delete "$INSTDIR\uninstall.exe"
    RMDir "$INSTDIR"

    Delete "$SMPROGRAMS\Plum.lnk"
    !insertmacro NoType ".wf" "Plum.Script"
    !insertmacro NoType ".wfp" "Plum.Package"
    DeleteRegValue HKCU "${RUN}" "Plum"
    DeleteRegKey HKCU "${UNINSTALL}"
    System::Call 'shell32::SHChangeNotify(i 0x08000000, i 0, p 0, p 0)'
SectionEnd
