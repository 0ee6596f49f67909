// The doubles of host applications, and one of a kind that no adapter knows.
#pragma once

#include "tests/support/FakeExcelHost.h"
#include "tests/support/FakeWordHost.h"

namespace krv::tests {

class ForeignHost final : public ports::HostApplication {};

}  // namespace krv::tests
