// Handing a report over to the program that works on a directory already. Both speak through a socket that has no file:
// its name is the directory itself, so it is gone with the program, and no path is too long for it. Only programs of
// the same user listen to each other. The directory's lock: files.h.
#pragma once

#include <optional>
#include <string>

// What a program that was started second asks of the one at work: to come to the front, and to open a report.
struct Request {
    std::string Report{};     // full path of the report to open; "" for none
    std::string Activation{}; // the desktop's leave to come to the front; "" where it gave none
};

// Hands a report, "" for none, to the program at work on the directory, and waits until it has taken it. False where
// none of this user's does.
bool HandOver(const std::string &directory, const std::string &report);

// Listens for requests to the program at work on the directory, which is this one, in place of any former one: the
// descriptor at which they arrive, -1 where none can.
int ListenForRequests(const std::string &directory);

// Nobody is heard any more; before the lock of the directory is given back.
void StopListening();

// The request that has arrived at the descriptor; none where it came from another user or not whole.
std::optional<Request> TakeRequest(int listener);
