// When unsaved entries are kept, offered and removed (recovery.h).
#include "main/recovery.h"

#include "form/main_window.h"
#include "main/recovery_entries.h"
#include "main/template_command.h"
#include "model/field_model.h"
#include "model/store.h"
#include "model/template_reader.h"
#include "model/text_files.h"
#include "platform/clock.h"
#include "platform/codepage.h"
#include "platform/controls.h"
#include "platform/dialogs.h"
#include "report/records.h"

#include <algorithm>
#include <optional>

namespace {

constexpr long long LeastWait = 10000; // milliseconds between two writes
constexpr long long WritingShare = 20; // of the time at most one part in so many goes into writing,
constexpr long long MostWait = 60000;  // up to this wait: one slow write says little of the next one

constexpr std::string_view Title = "UNSAVED ENTRIES";

// Tells one state of all entries from another.
struct Version {
    std::uint64_t Entries = 0;
    long Stores = 0;
    bool operator==(const Version &) const = default;
};

bool Ours = false;              // the recovery file, where there is one, is this session's
bool Exists = false;            // there is one
Version Kept;                   // what it holds
std::optional<Version> GivenUp; // what the user did not want to be saved; nothing before such an answer
long long NextWrite = 0;        // not before this moment

std::string RecoveryPath() { return ResourceDir + std::string(RecoveryName); }

// Where the directory has become read-only the file is emptied, and counts as none. False where neither can be.
bool DeleteKept() {
    if (FaultOf([] { DeleteFile(RecoveryPath()); }) == 0) return true;
    return IsPlainFile(RecoveryPath()) &&
           FaultOf([] { OutputFile(RecoveryPath(), OutputFile::Access::User).Close(false); }) == 0;
}

Version StateOf(const std::string &entries) { return {Checksum().Add(entries).Value(), StoreChanges()}; }

void KeepEntries() {
    const long long now = SteadyMilliseconds();
    if (!Ours || NumFields == 0 || now < NextWrite) return;
    bool changed = true;
    const Integer fault = FaultOf([&] {
        const std::string entries = EntriesOnScreen();
        const Version state = StateOf(entries);
        changed = !Exists || !(state == Kept);
        if (!changed) return;
        WriteEntries(entries);
        Exists = true;
        Kept = state;
    });
    if (!changed) return;
    // A disk that is full or refuses is told when the user saves; a message of ours would only be in the way.
    if (fault != 0) DeleteUnfinishedRecovery();
    const long long end = SteadyMilliseconds();
    NextWrite = end + std::clamp(WritingShare * (end - now), LeastWait, MostWait);
}

bool AreGivenUp() {
    bool same = false;
    FaultOf([&] { same = GivenUp && StateOf(EntriesOnScreen()) == *GivenUp; });
    return same;
}

// The first name of its kind that is free.
std::string FreeName() {
    int number = 1;
    const auto name = [&] { return ResourceDir + "quintave-kept" + std::to_string(number) + ".rec"; };
    while (NameTaken(name())) ++number;
    return name();
}

void TellRefusal(const std::string &reason, const std::string &path, std::string_view wayBack) {
    MsgBox(reason + NL + NL + "Your unsaved entries are NOT being loaded into Quintave!" + NL + NL +
               "They are kept in the file " + NameText(path) + "." + std::string(wayBack),
           CriticalIcon, Title);
}

// Says why the entries cannot be brought back, after their file was put aside. Where it cannot be, this session keeps
// its hands off it, and the next start offers it anyhow.
void Refuse(const std::string &reason, std::string_view wayBack) {
    const std::string path = FreeName();
    if (FaultOf([&] { RenameFile(RecoveryPath(), path); }) != 0) {
        TellRefusal(reason, RecoveryPath(), "");
        return;
    }
    Ours = true;
    TellRefusal(reason, path, wayBack);
}

// The cause may pass, other than a damage.
constexpr std::string_view WayBack = " To bring them back, correct the problem, end Quintave, give this file the name "
                                     "quintave.rec again and start Quintave.";

void RefuseDamaged() { Refuse("The file with the unsaved entries of your last session is damaged!", ""); }

std::string ErrorReason(Integer number) {
    return "Error: " + ErrorText(number) + NL +
           "Error bringing back the unsaved entries of your last session! (full drive? file locked? wrong "
           "privileges?).";
}

void RefuseError(Integer number) { Refuse(ErrorReason(number), WayBack); }

Answer AskUser(const EntriesOrigin &origin, const std::string &report) {
    const bool named = !origin.Report.empty() && origin.Report != FirstLoad;
    return MsgBox("The entries of your last session were not SAVED when Quintave ended." + NL + NL +
                      "        Fields Template File: " + NameText(origin.TemplateName) + NL +
                      (named ? "        RPX File: " + NameText(origin.Report) + NL : "") + NL +
                      "Would you like to bring them BACK?" + NL + NL +
                      "        YES - Bring all entries back, still to be saved." + NL +
                      "        NO - Remove them for good." +
                      (IsReportName(report)
                           ? NL + NL + "Note that after a YES answer the file " + NameText(report) + " is not opened!"
                           : ""),
                  YesNo + QuestionIcon, Title);
}

void RefuseTemplate(const EntriesOrigin &origin, const std::string &fault) {
    Refuse("The Fields Template File " + NameText(origin.TemplateName) +
               " of the unsaved entries of your last session " + fault + "!",
           WayBack);
}

// The template is there and has the elements that the entries were made for; otherwise after the message.
bool HasTemplate(const EntriesOrigin &origin) {
    const std::string name = FindName(origin.TemplateDir, origin.TemplateName);
    if (name.empty()) {
        RefuseTemplate(origin, "was not found");
        return false;
    }
    bool same = false;
    const Integer fault = FaultOf([&] {
        std::string suffix;
        const std::string path = origin.TemplateDir + name;
        same = ReadTemplateHeader(path, suffix) &&
               std::to_string(MarkOf(ReadTemplate(TemplateText(ReadFile(path))))) == origin.TemplateMark;
    });
    if (fault != 0)
        RefuseError(fault);
    else if (!same)
        RefuseTemplate(origin, "has changed since then");
    return same;
}

bool BringBack(const std::vector<RecoveryItem> &items) {
    const EntriesOrigin origin = OriginOf(items);
    if (!HasTemplate(origin)) return false;
    bool loaded = false;
    const Integer fault = FaultOf([&] {
        loaded = LoadTemplateAt(origin.TemplateDir, origin.TemplateName);
        if (!loaded) return;
        EndStep(); // there is a way back to the empty screen
        PlaceEntries(items);
    });
    if (fault == SubscriptOutOfRange)
        RefuseDamaged();
    else if (fault != 0)
        RefuseError(fault);
    else if (!loaded) // its own message has told why
        RefuseTemplate(origin, "could not be loaded");
    if (fault != 0 || !loaded) return false;
    SetListIndex(Quintave.List1[0], 0);
    Ours = true;
    Exists = true;
    return true;
}

// Settles what an earlier session has left. True where its entries are back, or nothing is to be loaded any more.
bool Offer(const std::string &report) {
    std::string bytes;
    std::vector<RecoveryItem> items;
    if (!ReadRecoveryFile(bytes, items)) {
        RefuseDamaged();
        return false;
    }
    const Answer answer = AskUser(OriginOf(items), report);
    if (answer == YesAnswer) return BringBack(items);
    if (answer != NoAnswer) return true; // the program was ended over the question
    Ours = DeleteKept();                 // where that cannot be, the next start offers them again
    return false;
}

} // namespace

bool OfferRecovery(const std::string &report) {
    const std::string firstDir = TemplateDir;
    const std::string firstTemplate = TemplateName;
    bool back = false;
    // A link that somebody left in its place is none of ours; the first write takes its place.
    Ours = !IsPlainFile(RecoveryPath()) || FileSize(RecoveryPath()) == 0;
    const Integer fault = FaultOf([&] { back = !Ours && Offer(report); });
    if (fault == PermissionDenied) // another user's: left where it is
        TellRefusal(ErrorReason(fault), RecoveryPath(), "");
    else if (fault != 0)
        RefuseError(fault);
    if (!back) {
        TemplateDir = firstDir;
        TemplateName = firstTemplate;
    }
    SetEnabled(Quintave.RecoveryTimer, true);
    return back;
}

void RecoveryTimer_Timer() {
    // In the middle of a command the entries may be half of one state and half of the next.
    if (IsInterrupting()) return;
    if (DataChanged == False)
        SettleRecovery();
    else
        KeepEntries();
}

void KeepBeforeAsking() {
    if (IsInterrupting() || DataChanged == False) return;
    NextWrite = 0;
    KeepEntries();
}

void SettleRecovery() {
    if (DataChanged != False) return;
    GivenUp.reset();
    if (Ours && Exists) Exists = !DeleteKept(); // tried again at the next tick
}

void GiveUpEntries() {
    FaultOf([] { GivenUp = StateOf(EntriesOnScreen()); });
}

void EndRecovery() {
    SettleRecovery();
    if (DataChanged != False && AreGivenUp()) {
        if (Ours && Exists) DeleteKept();
    } else if (DataChanged != False && !(Exists && IsInterrupting())) {
        // In the middle of a command what was kept before it is worth more than half of what it does. That half, as of
        // a report that is being loaded, must not be saved over the report.
        if (IsInterrupting()) FileMark.clear();
        NextWrite = 0;
        KeepEntries();
    }
    Ours = false;
}
