#pragma once

namespace foundation {

/// Base of abstract classes: what implements one is destroyed through it and never copied.
class Interface {
  public:
    Interface() = default;
    virtual ~Interface() = default;
    Interface(const Interface&) = delete;
    Interface& operator=(const Interface&) = delete;
    Interface(Interface&&) = delete;
    Interface& operator=(Interface&&) = delete;
};

} // namespace foundation
