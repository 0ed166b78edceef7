#pragma once

namespace foundation {

/// Base of classes whose objects are neither copied nor moved.
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

/// Base of abstract classes. Implementations are destroyed through it.
class Interface : public Pinned {
  public:
    virtual ~Interface() = default;
};

} // namespace foundation
