// Objects that carry their own atomic reference count, and the pointer that holds them.
#pragma once

#include <atomic>
#include <cstdint>
#include <string>
#include <utility>

namespace Ulmo {

class NonCopyable {
public:
    NonCopyable() = default;
    NonCopyable(const NonCopyable&) = delete;
    NonCopyable& operator=(const NonCopyable&) = delete;

protected:
    ~NonCopyable() = default;
};

// A new object has count 0: whoever makes it puts it into a CountedPtr.
class VirtualReferenceCountBaseClass : public NonCopyable {
public:
    virtual ~VirtualReferenceCountBaseClass() = default;
    virtual std::uint32_t AddRef() noexcept;   // the new count
    virtual std::uint32_t Release() noexcept;  // the new count; at zero OnFinalRelease runs, then Delete
    virtual void Delete() noexcept;
    virtual std::string ToString() const;  // "<refptr/>" unless a class says more
    virtual void OnFinalRelease() noexcept {}

private:
    std::atomic<std::uint32_t> count_{0};
};

template <class T>
class CountedPtr {
public:
    CountedPtr() = default;
    explicit CountedPtr(T* object) noexcept : object_(object)
    {
        if (object_) object_->AddRef();
    }
    CountedPtr(const CountedPtr& other) noexcept : CountedPtr(other.object_) {}
    CountedPtr(CountedPtr&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
    CountedPtr& operator=(CountedPtr other) noexcept
    {
        std::swap(object_, other.object_);
        return *this;
    }
    ~CountedPtr()
    {
        if (object_) object_->Release();
    }

    T* get() const noexcept { return object_; }
    T* operator->() const noexcept { return object_; }
    T& operator*() const noexcept { return *object_; }
    explicit operator bool() const noexcept { return object_ != nullptr; }

private:
    T* object_ = nullptr;
};

template <class T, class... Arguments>
CountedPtr<T> MakeCounted(Arguments&&... arguments)
{
    return CountedPtr<T>(new T(std::forward<Arguments>(arguments)...));
}

}  // namespace Ulmo
