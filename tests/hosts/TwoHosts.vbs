' One of two hosts, "1" and "2", that work on the same bill at once. They wait for each other at every Meet.
Const kRounds = 10
Dim store, own, other, steps, actions, refusal, modified, first
Set store = CreateObject("TavioSharedProps.PropStore")
own = WScript.Arguments(0)
other = CStr(3 - own)
steps = 0
modified = "该业务对象的操作已被其他用户修改"
first = "该业务对象已有保存过的操作"
refusal = "[Morla提示] TavioClassBillAction.BillActions : Save\n" & modified & ",请重新加载后再保存 (1)"

' Both have loaded before the first one saves; the second one's copy is stale then.
Load 1005
Meet
If own = "1" Then
  Check "first save", Saves("Save", "1"), True
  Meet
Else
  Meet
  Check "stale save", Saves("Close", "2"), False
  Check "its box", Boxes(), refusal
  Check "what the host changed stays", NameOf("Close") & actions.Item("Close")("FStatus"), "22"
  Load 1005
  Check "loaded again", Saves("Close", "2"), True
End If
Meet
Load 1005
Check "both changes", NameOf("Save") & NameOf("Close"), "12"

' A number that both raise, each of them kRounds times, as often as it takes.
Dim turn, refused
refused = 0
For turn = 1 To kRounds
  Meet
  Load 1005
  Do Until Saves("Save", CStr(NameOf("Save") + 1))
    refused = refused + 1
    Load 1005
  Loop
Next
Meet
Load 1005
Check "none is lost", NameOf("Save"), CStr(1 + 2 * kRounds)
Check "a box for every refusal", Boxes(), Mid(Replace(Space(refused), " ", vbLf & refusal), 2)
WScript.Echo "refused: " & refused

' The first save of new bills: one host's is stored, and the other's refused.
Dim added, saved
For turn = 1 To kRounds
  Set added = CreateObject("Vexo.Dictionary")
  added("FObjectID") = 2000 + turn
  added("FObjectType") = 4
  added("FCode") = "Save"
  added("FName") = own
  Load 2000 + turn
  actions.AddNew added
  Meet
  saved = actions.Save
  Meet
  If Not saved Then Check "its box", Boxes(), Replace(refusal, modified, first)
  Load 2000 + turn
  Check "the accepted one is stored", NameOf("Save") = own, saved
Next

Sub Meet()
  steps = steps + 1
  store.SetProperty "TwoHosts" & own, CStr(steps)
  Do Until CLng(store.GetProperty(0, "TwoHosts" & other)) >= steps
    WScript.Sleep 5
  Loop
End Sub

Sub Load(classType)
  Set actions = CreateObject("TavioClassBillAction.BillActions")
  actions.ClassTypeID = classType
  actions.Initialize
End Sub

Function NameOf(code)
  NameOf = actions.Item(code)("FName")
End Function

Function Saves(code, name)
  Dim action
  Set action = actions.Item(code)
  action("FName") = name
  actions.Update action
  Saves = actions.Save
End Function
