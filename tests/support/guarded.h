// A buffer of an exact size with guard bytes behind it, which are looked at when it goes.
#pragma once

#include <vector>

#include <gtest/gtest.h>

template <typename Unit>
class Guarded
{
  public:
    explicit Guarded(size_t size) : size_(size), units_(size + kGuards, Unit(kGuard)) {}
    ~Guarded()
    {
        for (size_t i = 0; i < kGuards; ++i)
            EXPECT_EQ(units_[size_ + i], Unit(kGuard)) << "written behind a buffer of " << size_;
    }
    Guarded(const Guarded &) = delete;
    Unit *data() { return units_.data(); }

  private:
    static constexpr size_t kGuards = 16;
    static constexpr int kGuard = 0x5A;
    size_t size_;
    std::vector<Unit> units_;
};
