#pragma once
#include <string>
#include <vector>

namespace vt {

// The most entries of one kind (alarms, repetitions) the settings file holds: its keys run
// from 001 to 998, and "_999" and beyond are never read. Nothing may add an entry past it.
inline constexpr int kMaxEntries = 998;

// A list of agenda entries numbered from 1, as the settings file numbers them. Removing an
// entry moves the later ones down by one.
class EntryList {
public:
    int Count() const { return static_cast<int>(items_.size()) - 1; }
    bool Empty() const { return Count() == 0; }

    const std::string& operator[](int index) const { return items_[static_cast<size_t>(index)]; }
    std::string& operator[](int index) { return items_[static_cast<size_t>(index)]; }

    void Append(std::string entry) { items_.push_back(std::move(entry)); }
    void Remove(int index) { items_.erase(items_.begin() + index); }
    void Clear() { items_.resize(1); }

    friend bool operator==(const EntryList&, const EntryList&) = default;

    // Slot 0 is never used; iteration starts at entry 1.
    auto begin() const { return items_.begin() + 1; }
    auto end() const { return items_.end(); }

private:
    std::vector<std::string> items_{1};
};

}  // namespace vt
