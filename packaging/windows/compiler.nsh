; The setup's part of the user's profile: the compiler's place with what was there before, and the way back.

; Before another folder gives way, it is kept beside.
Function TakeCompilerPlace
  Call FindCompiler
  ${If} $OtherCompiler != ""
    WriteRegStr HKCU "${WORKSHOP_KEY}" "InstallDir before Scrivo" $OtherCompiler
  ${EndIf}
  WriteRegStr HKCU "${WORKSHOP_KEY}" InstallDir "$INSTDIR\bin"
FunctionEnd

; A folder that the user has set since stays.
Function un.LeaveCompilerPlace
  ReadRegStr $0 HKCU "${WORKSHOP_KEY}" InstallDir
  ${If} $0 == "$INSTDIR\bin"
    ReadRegStr $0 HKCU "${WORKSHOP_KEY}" "InstallDir before Scrivo"
    ${If} $0 == ""
      DeleteRegValue HKCU "${WORKSHOP_KEY}" InstallDir
    ${Else}
      WriteRegStr HKCU "${WORKSHOP_KEY}" InstallDir $0
    ${EndIf}
  ${EndIf}
  DeleteRegValue HKCU "${WORKSHOP_KEY}" "InstallDir before Scrivo"
  DeleteRegKey /ifempty HKCU "${WORKSHOP_KEY}"
  ClearErrors
FunctionEnd

; Has the profile of each user who logs on filled once for each version; that of the one who installs is already.
!macro ActiveSetup
  !searchreplace VERSION_NUMBERS "${VERSION}" "." ","
  WriteRegStr HKLM "${ACTIVE_SETUP_KEY}" "" "${NAME}"
  WriteRegStr HKLM "${ACTIVE_SETUP_KEY}" StubPath '"$INSTDIR\profile.exe"'
  WriteRegStr HKLM "${ACTIVE_SETUP_KEY}" Version "${VERSION_NUMBERS},0"
  WriteRegStr HKCU "${ACTIVE_SETUP_KEY}" Version "${VERSION_NUMBERS},0"
!macroend

; Reads a whole file, whose name is in $R1, into the memory at $R3, its size into $R4. $R3 is 0 when it cannot be read.
Function un.ReadWhole
  StrCpy $R3 0
  System::Call 'kernel32::CreateFileW(w R1, i 0x80000000, i 7, p 0, i 3, i 0, p 0) p .R5'
  ${IfThen} $R5 P= -1 ${|} Return ${|}
  System::Call 'kernel32::GetFileSize(p R5, p 0) i .R4'
  IntOp $R6 $R4 + 1
  System::Alloc $R6
  Pop $R3
  System::Call 'kernel32::ReadFile(p R5, p R3, i R4, *i .R6, p 0)'
  System::Call 'kernel32::CloseHandle(p R5)'
  ${If} $R6 <> $R4
    System::Free $R3
    StrCpy $R3 0
  ${EndIf}
FunctionEnd

; Deletes the file in $R2 when it is the same as that in $R1.
Function un.DeleteSame
  Call un.ReadWhole
  ${IfThen} $R3 == 0 ${|} Return ${|}
  StrCpy $R7 $R3
  StrCpy $R8 $R4
  StrCpy $R1 $R2
  Call un.ReadWhole
  ${If} $R3 != 0
    StrCpy $R6 -1
    ${If} $R4 = $R8
      System::Call 'ntdll::RtlCompareMemory(p R7, p R3, p R4) p .R6'
    ${EndIf}
    System::Free $R3
    ${If} $R6 = $R8
      Delete $R2
    ${EndIf}
  ${EndIf}
  System::Free $R7
FunctionEnd

; Takes back the pages of the sample web that are as they were installed, and the folders that are empty then.
Function un.TakeSampleFolder
  Push $0
  Push $1
  FindFirst $0 $1 "$INSTDIR\sample\${SAMPLE_WEB}$R0\*.*"
  ${DoUntil} $1 == ""
    ${If} $1 != "."
    ${AndIf} $1 != ".."
      ${If} ${FileExists} "$INSTDIR\sample\${SAMPLE_WEB}$R0\$1\*.*"
        Push $R0
        StrCpy $R0 "$R0\$1"
        Call un.TakeSampleFolder
        Pop $R0
      ${Else}
        StrCpy $R1 "$INSTDIR\sample\${SAMPLE_WEB}$R0\$1"
        StrCpy $R2 "$SampleFolder$R0\$1"
        Call un.DeleteSame
      ${EndIf}
    ${EndIf}
    FindNext $0 $1
  ${Loop}
  FindClose $0
  RMDir "$SampleFolder$R0"
  ClearErrors
  Pop $1
  Pop $0
FunctionEnd

Function un.TakeSample
  !insertmacro FindSampleFolder
  StrCpy $R0 ""
  Call un.TakeSampleFolder
FunctionEnd
