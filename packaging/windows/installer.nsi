; The installer: for one user, without an administrator's rights. Made by packaging/windows_package.py, which defines VERSION, FILES
; (the folder with what is installed), ICON and TARGET.
;
; setup.exe [/S] [/PARTS=media,dvd,tv,cd,sound] [/CLASSES=user|machine] [/D=FOLDER]
;   /S        installs without asking
;   /PARTS    which parts of the platform layer (none: "none"); else those that an older version has, or the usual ones
;   /CLASSES  for whom they are registered; "machine" takes an administrator
;   /D        where to; must come last
; Settings, titles and albums belong to the user: nothing here writes or removes them.
Target amd64-unicode
!ifdef QUICK
  SetCompressor zlib  ; a test's installer
!else
  SetCompressor /SOLID lzma
!endif
!include MUI2.nsh
!include LogicLib.nsh
!include FileFunc.nsh
!include StrFunc.nsh
${StrStr}

!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\Quorvex"
!define SETUP_KEY "Software\Quorvex\Setup"
!define LOCAL_MACHINE -2147483646
!define MAXIMUM_ALLOWED 0x02000000

Name "Quorvex"
OutFile "${TARGET}"
RequestExecutionLevel user
InstallDir "$LOCALAPPDATA\Programs\Quorvex"
InstallDirRegKey HKCU "${SETUP_KEY}" "Folder"
BrandingText "Quorvex ${VERSION}"
ManifestDPIAware true
VIProductVersion "${VERSION}.0"
VIAddVersionKey "ProductName" "Quorvex"
VIAddVersionKey "ProductVersion" "${VERSION}"
VIAddVersionKey "FileDescription" "Installer of Quorvex"
VIAddVersionKey "FileVersion" "${VERSION}"
VIAddVersionKey "CompanyName" "The Quorvex authors"
VIAddVersionKey "LegalCopyright" "Free software under the GNU General Public License, version 3 or later"

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_COMPONENTSPAGE_SMALLDESC
!define MUI_FINISHPAGE_RUN "$INSTDIR\quorvex.exe"
!define MUI_FINISHPAGE_SHOWREADME "$INSTDIR\README.html"
!define MUI_FINISHPAGE_SHOWREADME_NOTCHECKED
!insertmacro MUI_PAGE_COMPONENTS
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"

Var classes  ; for whom the parts are registered: user or machine
Var parts    ; the parts asked for on the command line: ",media,dvd,"
Var usual    ; 1: without an older version and without /PARTS, every part is wanted

; What installer and uninstaller both do.
!macro SHARED_FUNCTIONS un
; Asks a running Quorvex to close, and waits until its file is free.
Function ${un}CloseQuorvex
  FindWindow $0 "PControl" "Quorvex"
  ${If} $0 P<> 0
    MessageBox MB_OKCANCEL|MB_ICONINFORMATION "Quorvex is running. It will be closed." /SD IDOK IDOK close
    Abort
    close:
    SendMessage $0 ${WM_CLOSE} 0 0 /TIMEOUT=5000
  ${EndIf}
  ${For} $1 1 100
    ${IfNot} ${FileExists} "$INSTDIR\quorvex.exe"
      Return
    ${EndIf}
    ClearErrors
    FileOpen $0 "$INSTDIR\quorvex.exe" a
    ${IfNot} ${Errors}
      FileClose $0
      Return
    ${EndIf}
    Sleep 200
  ${Next}
  MessageBox MB_OK|MB_ICONSTOP "Quorvex cannot be closed." /SD IDOK
  SetErrorLevel 2
  Abort
FunctionEnd

; Stack: DLL, function without parameters -> what it returns, or "error". For a user's own classes, what a server writes for the
; machine goes to the user.
Function ${un}CallServer
  Pop $1
  Pop $0
  ReadRegStr $2 HKCU "${SETUP_KEY}" "Classes"
  ${If} $2 == "user"
    System::Call 'advapi32::RegOpenCurrentUser(i ${MAXIMUM_ALLOWED}, *p .r3)'
    System::Call 'advapi32::RegOverridePredefKey(p ${LOCAL_MACHINE}, p r3)'
  ${EndIf}
  System::Call 'ole32::CoInitialize(p 0)'
  StrCpy $6 "error"
  System::Call 'kernel32::LoadLibrary(t r0) p .r4'
  ${If} $4 P<> 0
    System::Call 'kernel32::GetProcAddress(p r4, m r1) p .r5'
    ${If} $5 P<> 0
      System::Call '::$5() i .r6'
    ${EndIf}
    System::Call 'kernel32::FreeLibrary(p r4)'
  ${EndIf}
  System::Call 'ole32::CoUninitialize()'
  ${If} $2 == "user"
    System::Call 'advapi32::RegOverridePredefKey(p ${LOCAL_MACHINE}, p 0)'
    System::Call 'advapi32::RegCloseKey(p r3)'
  ${EndIf}
  Push $6
FunctionEnd
!macroend
!insertmacro SHARED_FUNCTIONS ""
!insertmacro SHARED_FUNCTIONS "un."

; An older version removes itself, with whatever it had that this one has not.
Function RemoveOlder
  ReadRegStr $0 HKCU "${SETUP_KEY}" "Folder"
  ${If} $0 != ""
  ${AndIf} ${FileExists} "$0\uninstall.exe"
    DetailPrint "Removing the version in $0"
    ExecWait '"$0\uninstall.exe" /S _?=$0' $1
    ${If} $1 <> 0
      MessageBox MB_OK|MB_ICONSTOP "The version in $0 cannot be removed." /SD IDOK
      SetErrorLevel 2
      Abort
    ${EndIf}
    Delete "$0\uninstall.exe"
    RMDir "$0"
  ${EndIf}
FunctionEnd

Section "Quorvex" SECTION_PLAYER
  SectionIn RO
  Call CloseQuorvex
  Call RemoveOlder
  SetOutPath "$INSTDIR"
  File "${FILES}\quorvex.exe"
  File "${FILES}\qvremote.exe"
  File "${FILES}\qvdrive.exe"
  File "${FILES}\README.html"
  File "${FILES}\manual.html"
  File "${FILES}\LICENSE.txt"
  File "${FILES}\THIRD-PARTY.txt"
  WriteUninstaller "$INSTDIR\uninstall.exe"
  WriteRegStr HKCU "${SETUP_KEY}" "Folder" "$INSTDIR"
  WriteRegStr HKCU "${SETUP_KEY}" "Classes" "$classes"

  CreateDirectory "$SMPROGRAMS\Quorvex"
  CreateShortcut "$SMPROGRAMS\Quorvex\Quorvex.lnk" "$INSTDIR\quorvex.exe"
  CreateShortcut "$SMPROGRAMS\Quorvex\Manual.lnk" "$INSTDIR\manual.html"
  CreateShortcut "$SMPROGRAMS\Quorvex\Read me.lnk" "$INSTDIR\README.html"
  CreateShortcut "$SMPROGRAMS\Quorvex\Uninstall Quorvex.lnk" "$INSTDIR\uninstall.exe"

  WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayName" "Quorvex"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayIcon" "$INSTDIR\quorvex.exe"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "Publisher" "The Quorvex authors"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\uninstall.exe"'
  WriteRegStr HKCU "${UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
  WriteRegDWORD HKCU "${UNINSTALL_KEY}" "NoModify" 1
  WriteRegDWORD HKCU "${UNINSTALL_KEY}" "NoRepair" 1
SectionEnd

; A part that is a COM server.
!macro SERVER_SECTION TITLE NAME
Section /o "${TITLE}" SECTION_${NAME}
  File "${FILES}\qv${NAME}.dll"
  Push "$INSTDIR\qv${NAME}.dll"
  Push "DllRegisterServer"
  Call CallServer
  Pop $0
  ${If} $0 != 0
    MessageBox MB_OK|MB_ICONEXCLAMATION "${TITLE}: registering qv${NAME}.dll failed ($0)." /SD IDOK
    SetErrorLevel 3
  ${EndIf}
SectionEnd
!macroend
!insertmacro SERVER_SECTION "Media files" media
!insertmacro SERVER_SECTION "DVDs" dvd
!insertmacro SERVER_SECTION "Virtual TV cards" tv

Section /o "CD drive for disc images" SECTION_cd
  File "${FILES}\qvcd.dll"
  nsExec::Exec '"$INSTDIR\qvdrive.exe" install'
  Pop $0
  ${If} $0 != 0
    DetailPrint "To make it the system's CD drive, an administrator runs: qvdrive install"
  ${EndIf}
SectionEnd

!insertmacro SERVER_SECTION "Sound of films for the sound keys" sound

!macro DESCRIBE NAME TEXT
  !insertmacro MUI_DESCRIPTION_TEXT ${SECTION_${NAME}} "${TEXT}"
!macroend
!insertmacro MUI_FUNCTION_DESCRIPTION_BEGIN
  !insertmacro DESCRIBE PLAYER "The remote control. It plays what Windows plays, with the drives and cards that the computer has."
  !insertmacro DESCRIBE media "Plays media files that Windows has no decoders for."
  !insertmacro DESCRIBE dvd "Plays DVDs: from a drive, an ISO image or a folder, in the place of Windows' own DVD player."
  !insertmacro DESCRIBE tv "TV and capture cards to try out, without hardware. qvdrive plugs them in."
  !insertmacro DESCRIBE cd "A drive for images of CDs. To take the place of the computer's own, it needs an administrator: qvdrive install"
  !insertmacro DESCRIBE sound "For Wine: sound of films that volume and balance reach."
!insertmacro MUI_FUNCTION_DESCRIPTION_END

; Selects a part, or not: as asked for, else as the older version has it, else as is usual.
!macro CHOOSE NAME
  StrCpy $1 0
  ${If} $parts != ""
    ${StrStr} $0 "$parts" ",${NAME},"
    ${If} $0 != ""
      StrCpy $1 1
    ${EndIf}
  ${ElseIf} ${FileExists} "$INSTDIR\uninstall.exe"
    ${If} ${FileExists} "$INSTDIR\qv${NAME}.dll"
      StrCpy $1 1
    ${EndIf}
  ${Else}
    StrCpy $1 $usual
  ${EndIf}
  ${If} $1 = 1
    !insertmacro SelectSection ${SECTION_${NAME}}
  ${EndIf}
!macroend

Function .onInit
  ; In Wine a user's own classes do not count, nothing plays without the parts, and everybody is an administrator.
  StrCpy $classes "user"
  StrCpy $usual 0
  System::Call 'kernel32::GetModuleHandle(t "ntdll.dll") p .r0'
  System::Call 'kernel32::GetProcAddress(p r0, m "wine_get_version") p .r0'
  ${If} $0 P<> 0
    StrCpy $classes "machine"
    StrCpy $usual 1
  ${Else}
    SectionSetText ${SECTION_sound} ""
  ${EndIf}
  ${GetParameters} $0
  ClearErrors
  ${GetOptions} $0 "/CLASSES=" $1
  ${IfNot} ${Errors}
    StrCpy $classes $1
  ${EndIf}
  ClearErrors
  ${GetOptions} $0 "/PARTS=" $1
  ${IfNot} ${Errors}
    StrCpy $parts ",$1,"
  ${EndIf}
  !insertmacro CHOOSE media
  !insertmacro CHOOSE dvd
  !insertmacro CHOOSE tv
  !insertmacro CHOOSE cd
  !insertmacro CHOOSE sound
FunctionEnd

!macro REMOVE_SERVER NAME
  ${If} ${FileExists} "$INSTDIR\qv${NAME}.dll"
    Push "$INSTDIR\qv${NAME}.dll"
    Push "DllUnregisterServer"
    Call un.CallServer
    Pop $0
    Delete "$INSTDIR\qv${NAME}.dll"
  ${EndIf}
!macroend

Section "Uninstall"
  Call un.CloseQuorvex
  !insertmacro REMOVE_SERVER media
  !insertmacro REMOVE_SERVER dvd
  !insertmacro REMOVE_SERVER tv
  !insertmacro REMOVE_SERVER sound
  nsExec::Exec '"$INSTDIR\qvdrive.exe" uninstall'
  Pop $0
  Delete "$INSTDIR\qvcd.dll"
  Delete "$INSTDIR\quorvex.exe"
  Delete "$INSTDIR\qvremote.exe"
  Delete "$INSTDIR\qvdrive.exe"
  Delete "$INSTDIR\README.html"
  Delete "$INSTDIR\manual.html"
  Delete "$INSTDIR\LICENSE.txt"
  Delete "$INSTDIR\THIRD-PARTY.txt"
  Delete "$INSTDIR\uninstall.exe"
  RMDir "$INSTDIR"
  Delete "$SMPROGRAMS\Quorvex\Quorvex.lnk"
  Delete "$SMPROGRAMS\Quorvex\Manual.lnk"
  Delete "$SMPROGRAMS\Quorvex\Read me.lnk"
  Delete "$SMPROGRAMS\Quorvex\Uninstall Quorvex.lnk"
  RMDir "$SMPROGRAMS\Quorvex"
  DeleteRegKey HKCU "${UNINSTALL_KEY}"
  DeleteRegKey HKCU "${SETUP_KEY}"
  ; Where the parts noted what they replaced.
  DeleteRegKey /ifempty HKLM "Software\Quorvex\Replaced"
  DeleteRegKey /ifempty HKLM "Software\Quorvex"
  DeleteRegKey /ifempty HKCU "Software\Quorvex\Replaced"
  DeleteRegKey /ifempty HKCU "Software\Quorvex"
SectionEnd
