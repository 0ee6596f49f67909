// Receives the events of an automation object through its connection point.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <oleauto.h>

#include <functional>
#include <memory>

#include "common/Subscription.h"

namespace krv::windows {

// Called on the apartment's thread with an event's number and arguments. An Error that it throws
// goes back to the source as a failed call.
using EventHandler = std::function<void(DISPID event, const DISPPARAMS& arguments)>;

// The argument that is declared at this index, counted from 0, whether the source names its
// arguments or gives them by position alone; null for one that isn't there.
[[nodiscard]] const VARIANT* EventArgument(const DISPPARAMS& arguments, UINT index);

// `events` is the source's dispatch interface of events. No event arrives any more when the
// subscription has gone, even from a source that keeps hold of the receiver. Throws Error when the
// source offers no such events or refuses.
[[nodiscard]] std::unique_ptr<Subscription> SubscribeToEvents(IUnknown* source, const IID& events,
                                                              EventHandler handler);

}  // namespace krv::windows
