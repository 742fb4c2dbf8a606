; A folder on PATH. The value is handled in memory of Windows' own: it may be longer than the texts of a setup, which would
; cut it off.

; The key of the variable: its root into $1, its name into $2.
!macro PathKey
  ${If} $MultiUser.InstallMode == AllUsers
    StrCpy $1 0x80000002
    StrCpy $2 "SYSTEM\CurrentControlSet\Control\Session Manager\Environment"
  ${Else}
    StrCpy $1 0x80000001
    StrCpy $2 "Environment"
  ${EndIf}
!macroend

!macro PathFunctions UN
  ; Reads PATH. Takes the folder in $0. The open key in $3 (0: it cannot be had), the value's type in $4, its text in the
  ; memory at $6, with room for the folder behind it.
  Function ${UN}ReadPath
    !insertmacro PathKey
    StrCpy $3 0
    System::Call 'advapi32::RegOpenKeyExW(p r1, w r2, i 0, i 0x2001F, *p .r3) i .r7'
    ${If} $7 <> 0
      StrCpy $3 0
      Return
    ${EndIf}
    System::Call 'advapi32::RegQueryValueExW(p r3, w "Path", p 0, *i .r4, p 0, *i 0 r5) i .r7'
    ${If} $7 <> 0
      StrCpy $4 2  ; there is none yet; it may name other variables
      StrCpy $5 0
    ${EndIf}
    StrLen $8 $0
    IntOp $8 $8 * 2
    IntOp $8 $8 + $5
    IntOp $8 $8 + 16
    System::Alloc $8
    Pop $6
    System::Call 'advapi32::RegQueryValueExW(p r3, w "Path", p 0, p 0, p r6, *i r5)'
    ClearErrors
  FunctionEnd

  ; Where the folder stands in the text, as a whole entry, into $7: 0 when it does not.
  Function ${UN}FindInPath
    StrLen $8 $0
    IntOp $8 $8 * 2
    StrCpy $7 $6
    ${Do}
      System::Call 'shlwapi::StrStrIW(p r7, w r0) p .r7'
      ${IfThen} $7 = 0 ${|} Return ${|}
      StrCpy $9 59  ; ";"
      ${If} $7 <> $6
        IntPtrOp $1 $7 - 2
        System::Call '*$1(&i2 .r9)'
      ${EndIf}
      IntPtrOp $1 $7 + $8
      System::Call '*$1(&i2 .r2)'
      ${If} $9 = 59
        ${If} $2 = 59
        ${OrIf} $2 = 0
          Return
        ${EndIf}
      ${EndIf}
      IntPtrOp $7 $7 + 2
    ${Loop}
  FunctionEnd

  ; Writes the text back, or deletes the value when nothing is in it, and tells the applications.
  Function ${UN}WritePath
    System::Call 'kernel32::lstrlenW(p r6) i .r5'
    ${If} $5 = 0
      System::Call 'advapi32::RegDeleteValueW(p r3, w "Path")'
    ${Else}
      IntOp $5 $5 * 2
      IntOp $5 $5 + 2
      System::Call 'advapi32::RegSetValueExW(p r3, w "Path", i 0, i r4, p r6, i r5)'
    ${EndIf}
    SendMessage ${HWND_BROADCAST} ${WM_SETTINGCHANGE} 0 "STR:Environment" /TIMEOUT=5000
  FunctionEnd
!macroend
!insertmacro PathFunctions ""
!insertmacro PathFunctions "un."

; Adds the folder in $0 at the end.
Function AddToPath
  Call ReadPath
  ${If} $3 == 0
    !insertmacro Fail "PATH could not be changed."
  ${EndIf}
  Call FindInPath
  ${If} $7 = 0
    System::Call 'kernel32::lstrlenW(p r6) i .r5'
    ${If} $5 <> 0
      System::Call 'kernel32::lstrcatW(p r6, w ";")'
    ${EndIf}
    System::Call 'kernel32::lstrcatW(p r6, w r0)'
    Call WritePath
  ${EndIf}
  System::Free $6
  System::Call 'advapi32::RegCloseKey(p r3)'
FunctionEnd

; Takes the folder in $0 out, with the ";" that joined it.
Function un.RemoveFromPath
  Call un.ReadPath
  ${IfThen} $3 == 0 ${|} Return ${|}
  Call un.FindInPath
  ${If} $7 <> 0
    IntPtrOp $1 $7 + $8
    ${If} $7 <> $6
      IntPtrOp $7 $7 - 2
    ${ElseIf} $2 = 59
      IntPtrOp $1 $1 + 2
    ${EndIf}
    System::Call 'kernel32::lstrlenW(p r1) i .r5'
    IntOp $5 $5 * 2
    IntOp $5 $5 + 2
    System::Call 'kernel32::RtlMoveMemory(p r7, p r1, p r5)'
    Call un.WritePath
  ${EndIf}
  System::Free $6
  System::Call 'advapi32::RegCloseKey(p r3)'
FunctionEnd
