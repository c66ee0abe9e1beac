// Typing as fast as nobody does: 200 contacts at 40 keys a second into a log that is nearly full,
// pressed on the X server whether the program follows or not. Not a letter may be lost, doubled or
// out of its place. Needs DISPLAY; see under_xvfb.sh.
#include "qt/real_session.h"
#include "session/log_file.h"

#include "platform/files.h"

#include <QProcess>

#include <algorithm>
#include <chrono>
#include <random>
#include <set>
#include <vector>

namespace zrt {
namespace {

constexpr int kContactsBefore = 8780; // with these 200 the log is 20 short of full
constexpr int kContacts = 200;
constexpr int kDelayMs = 20; // xdotool takes some more: about 40 keys a second come of it

struct Contact {
    std::string Call, Notes;
};

std::string LetterString(std::mt19937 &random, std::size_t length) {
    std::uniform_int_distribution<int> letter('a', 'z');
    std::string text(length, ' ');
    std::generate(text.begin(), text.end(), [&] { return static_cast<char>(letter(random)); });
    return text;
}

std::string Upper(std::string text) {
    for (char &c : text)
        if (c >= 'a' && c <= 'z')
            c = static_cast<char>(c - 'a' + 'A');
    return text;
}

// Different calls of four to six characters; each with a report and a name behind it.
std::vector<Contact> Contacts() {
    std::mt19937 random(20261121);
    std::uniform_int_distribution<int> digit(0, 9), length(1, 3);
    std::set<std::string> calls;
    std::vector<Contact> contacts;
    while (contacts.size() < kContacts) {
        const std::string call = "dl" + std::to_string(digit(random)) +
                                 LetterString(random, static_cast<std::size_t>(length(random)));
        if (!calls.insert(call).second)
            continue;
        contacts.push_back({call, "599 " + LetterString(random, 5)});
    }
    return contacts;
}

LogEntry EarlierContact(int n) {
    LogEntry entry;
    entry.Date = DateCode(2026, 11, 21);
    entry.Time = static_cast<i16>(n / 400 * 100 + n / 8 % 50);
    entry.BandIndex = 3;
    entry.Callsign = "K" + std::to_string(n % 10) + static_cast<char>('A' + n / 10 % 26) +
                     static_cast<char>('A' + n / 260 % 26) + static_cast<char>('A' + n / 6760);
    entry.SentNumber = static_cast<i16>(n);
    entry.RcvdName = "599";
    entry.Points = "2";
    return entry;
}

// Opens a log of kContactsBefore contacts, as after a crash.
void StartFullLog(RealProgram &program) {
    ASSERT_NO_FATAL_FAILURE(StartGenericLog(program));
    program.Kill();
    FileBytes bytes;
    ASSERT_EQ(ReadFile(program.TemporaryLog(), bytes), 0);
    bytes.resize(kEntryLength * (kContactsBefore + 1));
    for (int n = 1; n <= kContactsBefore; ++n) {
        const auto record = Encode(EarlierContact(n));
        std::copy(record.begin(), record.end(),
                  bytes.begin() + static_cast<std::ptrdiff_t>(kEntryLength) * n);
    }
    ASSERT_EQ(ReplaceFile(program.TemporaryLog(), bytes), 0);
    program.Start();
    ASSERT_TRUE(Comes(program, "focus", "Yes")); // of the question whether to open it
    program.Send("key Enter");
    ASSERT_TRUE(Comes(program, "text QSONrLabel", NextContact(kContactsBefore + 1)));
    const QStringList activate = {QStringLiteral("search"),        QStringLiteral("--sync"),
                                  QStringLiteral("--onlyvisible"), QStringLiteral("--name"),
                                  QStringLiteral("^ZRTLOG$"),      QStringLiteral("windowactivate"),
                                  QStringLiteral("--sync")};
    ASSERT_EQ(QProcess::execute(QStringLiteral("xdotool"), activate), 0);
    ASSERT_TRUE(Comes(program, "focus", "InData(0)"));
}

TEST(TypingStorm, LeavesExactlyItsContactsInTheLog) {
    Files = DiskFiles();
    const TemporaryHome home;
    RealProgram program(home.Path, "xcb");
    ASSERT_NO_FATAL_FAILURE(StartFullLog(program));

    const std::vector<Contact> contacts = Contacts();
    QStringList keys = {QStringLiteral("key"), QStringLiteral("--delay"),
                        QString::number(kDelayMs)};
    const qsizetype first = keys.size();
    for (const Contact &contact : contacts) {
        for (const char c : contact.Call + " " + contact.Notes)
            keys += c == ' ' ? QStringLiteral("space") : QString(QLatin1Char(c));
        keys += QStringLiteral("Return");
    }
    const auto start = std::chrono::steady_clock::now();
    ASSERT_EQ(QProcess::execute(QStringLiteral("xdotool"), keys), 0);
    const std::chrono::duration<double> typing = std::chrono::steady_clock::now() - start;
    bool gone = false;
    ASSERT_TRUE(Comes(program, "text QSONrLabel", NextContact(kContactsBefore + kContacts + 1)))
        << "window " << program.Ask("window", gone) << ", focus " << program.Ask("focus", gone)
        << ", call " << program.Ask("text InData(0)", gone) << ", notes "
        << program.Ask("text InData(1)", gone);
    const std::chrono::duration<double> done = std::chrono::steady_clock::now() - start;
    const auto count = static_cast<double>(keys.size() - first);
    std::printf("%.0f keys, %.1f a second; the last contact stood %.2f s after the last key\n",
                count, count / typing.count(), (done - typing).count());

    FileBytes bytes;
    ASSERT_EQ(ReadFile(program.TemporaryLog(), bytes), 0);
    ASSERT_EQ(bytes.size(), kEntryLength * (kContactsBefore + kContacts + 1));
    for (int i = 0; i < kContactsBefore + kContacts; ++i) {
        const int n = i + 1;
        LogEntry entry;
        Decode(std::span(bytes).subspan(kEntryLength * static_cast<std::size_t>(n)), entry);
        ASSERT_EQ(entry.SentNumber, n);
        if (i < kContactsBefore) {
            ASSERT_EQ(entry, EarlierContact(n));
            continue;
        }
        const Contact &contact = contacts[static_cast<std::size_t>(i - kContactsBefore)];
        ASSERT_EQ(entry.Callsign.Trimmed(), Upper(contact.Call)) << n;
        ASSERT_EQ(entry.RcvdName.Trimmed(), Upper(contact.Notes)) << n;
    }
}

} // namespace
} // namespace zrt
