#pragma once
#include <vector>

#include "store/busy.h"

namespace vt::test {

// Keeps every switch of the busy caption, so a test sees that each "on" was followed by "off".
class RecordingBusy : public Busy {
public:
    void SetBusy(bool on) override { calls.push_back(on); }
    std::vector<bool> calls;
};

}  // namespace vt::test
