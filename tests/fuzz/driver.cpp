// Runs a fuzz target without a fuzzing engine:
//   fuzz_x [runs] [--seed n]    the corpus, then `runs` (20000) mutations of it
//   fuzz_x file ...             these inputs alone
// The same seed gives the same mutations. An input that makes the target fail is left in a file.

#include <QDir>
#include <QFile>

#include <sanitizer/common_interface_defs.h>

#include <array>
#include <csignal>
#include <cstdio>
#include <random>
#include <vector>

#include <unistd.h>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

namespace {

constexpr unsigned hangSeconds = 60;
constexpr size_t largest = 1 << 16;

using Input = std::vector<uint8_t>;

// What the handlers below can reach.
struct Current
{
    Input input;
    std::array<char, 64> failureFile{};
} current; // NOLINT: a signal handler has no other way to it

void keepInput()
{
    QFile file(QString::fromLatin1(current.failureFile.data()));
    if (file.open(QIODevice::WriteOnly))
        file.write(
            reinterpret_cast<const char *>(current.input.data()), static_cast<qint64>(current.input.size()));
    std::fprintf(stderr, "The failing input is in %s\n", current.failureFile.data());
}

void onSignal(int signal)
{
    keepInput();
    _exit(128 + signal);
}

void run(Input input)
{
    current.input = std::move(input);
    alarm(hangSeconds);
    LLVMFuzzerTestOneInput(current.input.data(), current.input.size());
}

Input read(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        std::fprintf(stderr, "cannot read %s\n", qPrintable(path));
        std::exit(2);
    }
    const QByteArray bytes = file.readAll();
    return {bytes.begin(), bytes.end()};
}

class Mutator
{
public:
    Mutator(const std::vector<Input> &corpus, uint32_t seed)
        : m_corpus(corpus)
        , m_random(seed)
    {
    }

    Input next()
    {
        Input input = m_corpus[below(m_corpus.size())];
        for (size_t changes = 1 + below(6); changes > 0; --changes)
            change(input);
        if (input.size() > largest)
            input.resize(largest);
        return input;
    }

private:
    size_t below(size_t limit) { return limit == 0 ? 0 : m_random() % limit; }
    std::ptrdiff_t place(const Input &input) { return static_cast<std::ptrdiff_t>(below(input.size() + 1)); }

    void change(Input &input)
    {
        static constexpr std::array<uint64_t, 10> interesting{
            0, 1, 0x7F, 0x80, 0xFF, 0x7FFF, 0xFFFF, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF};
        switch (below(7)) {
        case 0:
            if (!input.empty())
                input[below(input.size())] ^= static_cast<uint8_t>(1 << below(8));
            break;
        case 1:
            if (!input.empty())
                input[below(input.size())] = static_cast<uint8_t>(m_random());
            break;
        case 2:
            input.insert(input.begin() + place(input), 1 + below(8), static_cast<uint8_t>(m_random()));
            break;
        case 3: {
            const auto from = input.begin() + place(input);
            const auto left = static_cast<size_t>(input.end() - from);
            input.erase(from, from + static_cast<std::ptrdiff_t>(below(std::min<size_t>(left, 16) + 1)));
            break;
        }
        case 4:
            input.resize(static_cast<size_t>(place(input)));
            break;
        case 5: {
            const uint64_t value = interesting[below(interesting.size())];
            const size_t width = size_t{1} << below(3);
            if (input.size() >= width) {
                const size_t at = below(input.size() - width + 1);
                for (size_t i = 0; i < width; ++i)
                    input[at + i] = static_cast<uint8_t>(value >> 8 * i);
            }
            break;
        }
        default: {
            const Input &other = m_corpus[below(m_corpus.size())];
            const auto from = other.begin() + place(other);
            const Input piece(from, other.end());
            input.resize(static_cast<size_t>(place(input)));
            input.insert(input.end(), piece.begin(), piece.end());
            break;
        }
        }
    }

    const std::vector<Input> &m_corpus;
    std::mt19937 m_random;
};

} // namespace

int main(int argc, char **argv)
{
    unsigned long runs = 20000;
    uint32_t seed = 1;
    QStringList files;
    for (int i = 1; i < argc; ++i) {
        const QString argument = QString::fromLocal8Bit(argv[i]);
        bool isNumber = false;
        const unsigned long number = argument.toULong(&isNumber);
        if (argument == QLatin1StringView("--seed") && i + 1 < argc)
            seed = static_cast<uint32_t>(QByteArray(argv[++i]).toULong());
        else if (isNumber)
            runs = number;
        else
            files += argument;
    }
    std::snprintf(current.failureFile.data(), current.failureFile.size(), "fuzz-failure-%ld",
        static_cast<long>(getpid()));
    __sanitizer_set_death_callback(keepInput);
    std::signal(SIGABRT, onSignal);
    std::signal(SIGALRM, onSignal);

    if (!files.isEmpty()) {
        for (const QString &file : files)
            run(read(file));
        return 0;
    }
    const QDir folder(QStringLiteral(FUZZ_CORPUS));
    std::vector<Input> corpus;
    for (const QString &name : folder.entryList(QDir::Files, QDir::Name))
        corpus.push_back(read(folder.filePath(name)));
    if (corpus.empty()) {
        std::fprintf(stderr, "there is nothing in %s\n", FUZZ_CORPUS);
        return 2;
    }
    std::printf("%zu seeds, %lu mutations, seed %u\n", corpus.size(), runs, seed);
    std::fflush(stdout);
    for (const Input &input : corpus)
        run(input);
    Mutator mutator(corpus, seed);
    for (unsigned long i = 0; i < runs; ++i)
        run(mutator.next());
}
