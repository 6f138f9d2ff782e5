#pragma once

#include "development/storage/Database.h"

namespace tavio::development {

// A record set over a result that was read whole, as an automation object. Members: BOF, EOF, RecordCount, MoveFirst,
// MoveNext, MovePrevious, MoveLast, Close, and Fields (also the default member), which is a collection with Count and
// Item(name or index from 0), or a field itself if it is given a name or an index. A field has Name and Value. Names
// are matched without regard to letter case. Reading a value without a current record raises error 0x800A0BCD.
ComPtr<IDispatch> MakeRecordSet(Rows rows);

}  // namespace tavio::development
