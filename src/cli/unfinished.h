// Outputs that did not become whole, which quintave-cli leaves nowhere: a second process removes them when the first
// one has ended, in whatever way it did.
#pragma once

#include <csignal>
#include <string>

// A file that is to go when the program ends, if it is still there then.
void RemoveAtEnd(const std::string &path);

// No signal ends the program between the making of a file and the call above.
class SignalsHeld {
public:
    SignalsHeld();
    ~SignalsHeld();
    SignalsHeld(const SignalsHeld &) = delete;
    SignalsHeld &operator=(const SignalsHeld &) = delete;

private:
    sigset_t former{};
};

// Waits until everything has been removed.
void EndRemoving();
