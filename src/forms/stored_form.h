// A form of an object as a new system string, which an operation of the interface table hands out.
#pragma once

#include "catalogue/boundary.h"
#include "objects/operation.h"

namespace OrvPLC {

// An object that holds a value without a text, such as an instant before the first year, has no such form: the string
// is null then, like the block of a binary form that cannot be made.
template <class Make>
void StoreInOperation(OrvBStr* text, Make&& make)
{
    *text = nullptr;
    InOperation([&] { *text = NewBStr(make()); });
}

}  // namespace OrvPLC
