; The installer for Windows, made by tools/make-windows-installer, which says
;   VERSION  of the product
;   STAGE    the folder of what is installed, with a folder for each section
;   MADE     the folder of what was made for this script: NAME.nsh removes what section NAME installs
;   OUTPUT   the installer
; Silent: /S, with /SERVICE also the service, with /D=FOLDER (the last word, without quotes) elsewhere.

Target amd64-unicode
Name "Mirn ${VERSION}"
OutFile "${OUTPUT}"
InstallDir "$PROGRAMFILES64\Mirn"
RequestExecutionLevel admin
ManifestSupportedOS Win10
ShowInstDetails show
ShowUninstDetails show

!include FileFunc.nsh
!include LogicLib.nsh
!include Sections.nsh

!define REMOVAL "Software\Microsoft\Windows\CurrentVersion\Uninstall\Mirn"
InstallDirRegKey HKLM "${REMOVAL}" InstallLocation

VIProductVersion ${VERSION}
VIAddVersionKey ProductName "Mirn"
VIAddVersionKey ProductVersion ${VERSION}
VIAddVersionKey FileVersion ${VERSION}
VIAddVersionKey FileDescription "Installs the Mirn host"
VIAddVersionKey LegalCopyright "Apache License 2.0"

PageEx license
  LicenseData "${STAGE}/host/LICENSE.txt"
PageExEnd
Page components
Page directory
Page instfiles
UninstPage uninstConfirm
UninstPage instfiles

Var serviceProgram ; what it runs; empty where there is none
Var wasRunning

!macro Fail TEXT
  DetailPrint "${TEXT}"
  SetErrorLevel 2
  Abort "${TEXT}"
!macroend

Section "Host and module"
  SectionIn RO
  ; An upgrade: the programs are in use while the service runs. One that starts takes no stop yet, and a process needs a
  ; while to go: up to two minutes for both.
  StrCpy $wasRunning no
  ${If} $serviceProgram != ""
  ${AndIf} ${FileExists} "$INSTDIR\mirn-host.exe"
    ${For} $1 1 240
      nsExec::Exec 'net stop mirn-host'
      Pop $0
      ${If} $0 == 0
        StrCpy $wasRunning yes
      ${EndIf}
      ClearErrors
      FileOpen $2 "$INSTDIR\mirn-host.exe" a
      ${IfNot} ${Errors}
        FileClose $2
        ${ExitFor}
      ${EndIf}
      Sleep 500
    ${Next}
  ${EndIf}

  SetOutPath $INSTDIR
  ClearErrors
  File /r "${STAGE}/host/*"
  WriteUninstaller "$INSTDIR\uninstall.exe"
  ${If} ${Errors}
    !insertmacro Fail "The files could not be written"
  ${EndIf}

  WriteRegStr HKLM "${REMOVAL}" DisplayName "Mirn"
  WriteRegStr HKLM "${REMOVAL}" DisplayVersion ${VERSION}
  WriteRegStr HKLM "${REMOVAL}" Publisher "Mirn"
  WriteRegStr HKLM "${REMOVAL}" InstallLocation $INSTDIR
  WriteRegStr HKLM "${REMOVAL}" UninstallString '"$INSTDIR\uninstall.exe"'
  WriteRegStr HKLM "${REMOVAL}" QuietUninstallString '"$INSTDIR\uninstall.exe" /S'
  WriteRegDWORD HKLM "${REMOVAL}" NoModify 1
  WriteRegDWORD HKLM "${REMOVAL}" NoRepair 1
  ${If} ${Errors}
    !insertmacro Fail "The removal could not be registered"
  ${EndIf}
SectionEnd

Section "Simulated machine, an example of a storage library"
  SetOutPath $INSTDIR
  File /r "${STAGE}/library/*"
SectionEnd

Section /o "Windows service" service
  nsExec::ExecToLog '"$INSTDIR\mirn-host.exe" service install'
  Pop $0
  ${If} $0 != 0
    !insertmacro Fail "The service could not be installed"
  ${EndIf}
SectionEnd

Section
  ${If} $wasRunning == yes
    nsExec::ExecToLog 'net start mirn-host'
    Pop $0
  ${EndIf}
SectionEnd

Function .onInit
  ${GetParameters} $0
  ClearErrors
  ${GetOptions} $0 "/SERVICE" $1
  ${IfNot} ${Errors}
    !insertmacro SelectSection ${service}
  ${EndIf}
  ; One that is there stays as it is, with its options.
  ReadRegStr $serviceProgram HKLM "SYSTEM\CurrentControlSet\Services\mirn-host" ImagePath
  ${If} $serviceProgram != ""
    !insertmacro UnselectSection ${service}
  ${EndIf}
FunctionEnd

; Takes away what was installed and nothing else: configuration and tokens stay in the folder of program data.
Section "un.Everything"
  ReadRegStr $1 HKLM "SYSTEM\CurrentControlSet\Services\mirn-host" ImagePath
  ${If} $1 != ""
    nsExec::ExecToLog '"$INSTDIR\mirn-host.exe" service remove'
    Pop $0
    ${If} $0 != 0
      !insertmacro Fail "The service could not be removed"
    ${EndIf}
  ${EndIf}
  !include "${MADE}/library.nsh"
  !include "${MADE}/host.nsh"
  Delete "$INSTDIR\uninstall.exe"
  RMDir $INSTDIR
  DeleteRegKey HKLM "${REMOVAL}"
SectionEnd
