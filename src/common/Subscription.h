// Subscription: what a receiver of events holds; destroying it ends the events.
#pragma once

namespace krv {

class Subscription {
 public:
    Subscription() = default;
    Subscription(const Subscription&) = delete;
    Subscription& operator=(const Subscription&) = delete;
    virtual ~Subscription() = default;
};

}  // namespace krv
