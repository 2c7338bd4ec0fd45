#pragma once

namespace vt {

// The "...procesando..." caption that long operations show while they run.
class Busy {
public:
    virtual ~Busy() = default;
    virtual void SetBusy(bool on) = 0;
};

class BusyScope {
public:
    explicit BusyScope(Busy& busy) : busy_(busy) { busy_.SetBusy(true); }
    ~BusyScope() { busy_.SetBusy(false); }
    BusyScope(const BusyScope&) = delete;
    BusyScope& operator=(const BusyScope&) = delete;

private:
    Busy& busy_;
};

}  // namespace vt
