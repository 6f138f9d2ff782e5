' The translation of bench/TranslationBench.cpp as a script host does it: prints the milliseconds that one takes. Wine's
' engine has no Join, no ChrW, and no String with a character beyond ASCII.
Option Explicit
Const kNames = 2000, kUnits = 45000, kRounds = 5

Dim values, text, expected, filler, started, result, i
Set values = CreateObject("Scripting.Dictionary")
For i = 0 To kNames - 1
  values.Add "FField" & (1000 + i), "value " & i
  filler = Repeated(Chr(52932), i Mod 10 + 4)
  text = text & "[FField" & (1000 + i) & "]" & filler
  expected = expected & "value " & i & filler
Next
filler = Repeated(Chr(41379), kUnits - Len(text))
text = text & filler
expected = expected & filler

started = Timer
For i = 1 To kRounds
  result = Translated(text)
Next
If result = expected Then WScript.Echo "same " & CLng((Timer - started) * 1000 / kRounds) Else WScript.Echo "another"

Function Translated(given)
  Dim built, plain, first, last, name
  plain = 1
  Do
    first = InStr(plain, given, "[")
    If first = 0 Then Exit Do
    last = InStr(first, given, "]")
    If last = 0 Then Exit Do
    name = Mid(given, first + 1, last - first - 1)
    built = built & Mid(given, plain, first - plain)
    If values.Exists(name) Then built = built & values.Item(name) Else built = built & "[" & name & "]"
    plain = last + 1
  Loop
  Translated = built & Mid(given, plain)
End Function

Function Repeated(sign, times)
  Dim n
  For n = 1 To times
    Repeated = Repeated & sign
  Next
End Function
