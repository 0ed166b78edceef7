#pragma once

namespace foundation {

/// Base of classes whose objects stay where they were made: never copied, never moved.
class Pinned {
  public:
    Pinned() = default;
    Pinned(const Pinned&) = delete;
    Pinned& operator=(const Pinned&) = delete;
    Pinned(Pinned&&) = delete;
    Pinned& operator=(Pinned&&) = delete;

  protected:
    ~Pinned() = default;
};

/// Base of abstract classes, whose implementations are destroyed through them and never copied.
class Interface : public Pinned {
  public:
    virtual ~Interface() = default;
};

} // namespace foundation
