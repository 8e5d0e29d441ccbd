// A window that is made at its first touch.
#pragma once

#include <functional>
#include <memory>
#include <utility>

namespace packwise {

template <class T>
class Lazy {
public:
    explicit Lazy(std::function<std::unique_ptr<T>()> make) : make_(std::move(make)) {}

    // The window; made now if this is its first touch.
    T& operator()() {
        if (!object_) {
            object_ = make_();
        }
        return *object_;
    }
    T* operator->() { return &(*this)(); }

    // The window if it has been made, else null. No touch.
    T* ifLoaded() const { return object_.get(); }

    // Whether it is on the screen. No touch.
    bool isVisible() const { return object_ && object_->isVisible(); }

private:
    std::function<std::unique_ptr<T>()> make_;
    std::unique_ptr<T> object_;
};

}  // namespace packwise
