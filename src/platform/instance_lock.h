#pragma once

namespace vt {

// Guards against two copies of the program working on the same data folder at once.
class InstanceLock {
public:
    virtual ~InstanceLock() = default;
    // True when this process now owns the folder; false when another process does.
    virtual bool TryAcquire() = 0;
};

}  // namespace vt
