' Designs a new bill type from the predefined actions:  cscript /nologo new_bill.vbs
Option Explicit

Const RightsObjectId = 1005

Dim actions, template
Set actions = CreateObject("TavioClassBillAction.BillActions")
actions.ClassTypeID = 1005
Do
  actions.ClassTypeID = actions.ClassTypeID + 1
  actions.Initialize
Loop Until actions.GetBillActions.Count = 0

Set template = CreateObject("Vexo.Dictionary")
template("FID") = actions.ClassTypeID
template("FBillTypeID") = 3
Set actions.ClassType = template
actions.NewBill
PrintActions "The default actions of the new bill type " & actions.ClassTypeID & ":"

Dim added
Set added = CreateObject("Vexo.Dictionary")
added("FCode") = "Archive"
added("FName") = "Archive"
added("FEnvironment") = 1
added("FObjectID") = RightsObjectId
If Not actions.AddNew(added) Then WScript.Quit 1
WScript.Echo "Added Archive."

Dim first, renamed
first = actions.GetBillActions.Name(1)
Set renamed = actions.Item(first)
renamed("FCode_Old") = first
renamed("FCode") = first & "2"
If Not actions.AddNew(renamed) Then WScript.Quit 1
WScript.Echo "Gave " & first & " the code " & first & "2."

actions.Remove "Archive"
WScript.Echo "Removed Archive: its status is " & actions.Item("Archive")("FStatus") & "."
If Not actions.AddNew(added) Then WScript.Quit 1
WScript.Echo "Brought it back: its status is " & actions.Item("Archive")("FStatus") & "."

Dim scenarios, i, scenario
Set scenarios = CreateObject("TavioClassBillAction.BillEnvironments").GetSortList
WScript.Echo "The scenarios:"
For i = 1 To scenarios.Count
  Set scenario = scenarios(i)
  WScript.Echo "  " & Space(2 * scenario("Level")) & scenario("FName") & " (" & scenario("FMask") & ")"
Next

If Not actions.Save Then WScript.Quit 1
PrintActions "Saved, and loaded again:"
WScript.Echo "Done."

Sub PrintActions(title)
  Dim key, action
  WScript.Echo title
  For Each key In actions.GetBillActions
    Set action = actions.Item(key)
    WScript.Echo "  " & action("FID") & "  " & key & "  " & action("FName") & "  status " & action("FStatus") & _
      ", rights mask " & action("FRightMask")
  Next
End Sub
