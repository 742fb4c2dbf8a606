; Scrivo.dll, one for each kind of application, in $INSTDIR\x86 and $INSTDIR\x64, and its registration with the regsvr32 of
; its kind.

; The regsvr32 for libraries of a KIND, into $R6. A 32-bit setup finds the 64-bit one only below Sysnative; what it calls
; System32 is the folder of 32-bit programs.
!macro FindRegsvr KIND
  !if ${CPU} == x86
    !if ${KIND} == x64
      StrCpy $R6 "$WINDIR\Sysnative\regsvr32.exe"
    !else
      StrCpy $R6 "$SYSDIR\regsvr32.exe"
    !endif
  !else if ${KIND} == x64
    StrCpy $R6 "$SYSDIR\regsvr32.exe"
  !else
    StrCpy $R6 "$WINDIR\SysWOW64\regsvr32.exe"
  !endif
!macroend

; The registry of programs of a KIND.
!macro ViewOf KIND
  !if ${KIND} == x64
    SetRegView 64
  !else
    SetRegView 32
  !endif
!macroend

; The library that the class is registered with for programs of a KIND, into $R7.
!macro RegisteredLibrary KIND
  !insertmacro ViewOf ${KIND}
  ReadRegStr $R7 SHCTX "Software\Classes\CLSID\${CLASS}\InprocServer32" ""
  !insertmacro NativeView
!macroend

; Takes a library away. One that an application has loaded cannot be deleted, but given another name, which frees its own;
; it goes when Windows starts the next time. Who is no administrator cannot leave files to that, but a command.
!macro RemoveLibrary KIND
  ; One that the removal of the earlier version has left counts too.
  Delete "$INSTDIR\${KIND}\*.tmp"
  ${If} ${FileExists} "$INSTDIR\${KIND}\*.tmp"
    StrCpy $InUse 1
  ${EndIf}
  Delete "$INSTDIR\${KIND}\Scrivo.dll"
  ${If} ${FileExists} "$INSTDIR\${KIND}\Scrivo.dll"
    GetTempFileName $R7 "$INSTDIR\${KIND}"
    Delete $R7
    Rename "$INSTDIR\${KIND}\Scrivo.dll" $R7
    ${If} ${FileExists} "$INSTDIR\${KIND}\Scrivo.dll"
      !insertmacro Fail "$INSTDIR\${KIND}\Scrivo.dll is in use. Close FrontPage, SharePoint Designer and Scrivo Host."
    ${EndIf}
    UserInfo::GetAccountType
    Pop $R6
    ${If} $R6 == Admin
      Delete /REBOOTOK $R7
    ${Else}
      ; Folders go with it when nothing else is in them.
      WriteRegStr HKCU "Software\Microsoft\Windows\CurrentVersion\RunOnce" "${NAME} ${KIND}" \
        '"$SYSDIR\cmd.exe" /d /c del /q "$INSTDIR\${KIND}\*.tmp" & rd "$INSTDIR\${KIND}" & rd "$INSTDIR"'
    ${EndIf}
    StrCpy $InUse 1
  ${EndIf}
  ClearErrors
!macroend

!macro InstallLibrary KIND
  !insertmacro RemoveLibrary ${KIND}
  SetOutPath "$INSTDIR\${KIND}"
  File "${STAGE}/library/${KIND}/Scrivo.dll"
  File "${STAGE}/library/${KIND}/Scrivo.CHM"
  SetOutPath "$INSTDIR"
  !insertmacro FindRegsvr ${KIND}
  ${If} ${FileExists} $R6
    ${If} $MultiUser.InstallMode == AllUsers
      ExecWait '"$R6" /s "$INSTDIR\${KIND}\Scrivo.dll"' $R7
    ${Else}
      ExecWait '"$R6" /s /n /i:user "$INSTDIR\${KIND}\Scrivo.dll"' $R7
    ${EndIf}
    !insertmacro RegisteredLibrary ${KIND}
    ${If} $R7 != "$INSTDIR\${KIND}\Scrivo.dll"
      !insertmacro Fail "$INSTDIR\${KIND}\Scrivo.dll could not be registered."
    ${EndIf}
  ${EndIf}
!macroend

; A registration that names another library, such as that of an unpacked archive, stays.
!macro UninstallLibrary KIND
  !insertmacro RegisteredLibrary ${KIND}
  !insertmacro FindRegsvr ${KIND}
  ${If} $R7 == "$INSTDIR\${KIND}\Scrivo.dll"
  ${AndIf} ${FileExists} $R6
    ${If} $MultiUser.InstallMode == AllUsers
      ExecWait '"$R6" /s /u "$INSTDIR\${KIND}\Scrivo.dll"'
    ${Else}
      ExecWait '"$R6" /s /u /n /i:user "$INSTDIR\${KIND}\Scrivo.dll"'
    ${EndIf}
    !insertmacro ViewOf ${KIND}
    !insertmacro DeleteEmptyKeys "Software\Microsoft\Office\SharePoint Designer\Addins" 2
    !insertmacro DeleteEmptyKeys "Software\Classes\CLSID" 0
    !insertmacro NativeView
  ${EndIf}
  !insertmacro RemoveLibrary ${KIND}
  Delete "$INSTDIR\${KIND}\Scrivo.CHM"
  RMDir "$INSTDIR\${KIND}"
  ${If} $InUse == 1
    RMDir /REBOOTOK "$INSTDIR\${KIND}"
  ${EndIf}
!macroend
