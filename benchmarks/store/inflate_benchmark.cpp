// Our decoder, libdeflate's and zlib's on the same streams, one after the other in the same run. libdeflate's
// takes a stream in one piece alone, which is the easier task.

#include "archive/inflate.h"

#include <QFile>

#include <benchmark/benchmark.h>
#include <libdeflate.h>
#include <zlib.h>

#include <cmath>
#include <random>

namespace {

using Bytes = std::vector<quint8>;

constexpr size_t sampleSize = 8 << 20;

// Sentences from a vocabulary in which some words are much more frequent than others.
Bytes text()
{
    std::mt19937 random(1);
    std::vector<std::string> words;
    for (int i = 0; i < 4000; ++i) {
        std::string word;
        for (unsigned length = 2 + random() % 8; length > 0; --length)
            word += static_cast<char>("etaoinshrdlucmfwypvbgkqjxz"[random() % (4 + random() % 22)]);
        words.push_back(word);
    }
    Bytes bytes;
    while (bytes.size() < sampleSize) {
        const double place = std::pow(static_cast<double>(random() % 10000) / 10000, 3);
        const std::string &word = words[static_cast<size_t>(place * static_cast<double>(words.size()))];
        bytes.insert(bytes.end(), word.begin(), word.end());
        bytes.push_back(random() % 12 == 0 ? '\n' : ' ');
    }
    bytes.resize(sampleSize);
    return bytes;
}

// The machine code and data of this program and the libraries it runs on.
Bytes binary()
{
    Bytes bytes;
    for (const char *path :
        {"/proc/self/exe", "/lib/x86_64-linux-gnu/libc.so.6", "/usr/lib/x86_64-linux-gnu/libQt6Core.so.6"}) {
        QFile file(QString::fromLatin1(path));
        if (!file.open(QIODevice::ReadOnly))
            continue;
        const QByteArray content = file.readAll();
        bytes.insert(bytes.end(), content.begin(), content.end());
    }
    bytes.resize(std::min(bytes.size(), sampleSize));
    return bytes;
}

// The rows of a photograph-like picture, each as the difference from the pixel before.
Bytes picture()
{
    std::mt19937 random(2);
    std::normal_distribution<double> grain(0, 3);
    Bytes bytes;
    bytes.reserve(sampleSize);
    constexpr int width = 2048;
    for (int y = 0; bytes.size() + width * 3 <= sampleSize; ++y) {
        std::array<quint8, 3> before{};
        for (int x = 0; x < width; ++x) {
            for (size_t c = 0; c < 3; ++c) {
                const double light
                    = 128 + 60 * std::sin(x * 0.01 + static_cast<double>(c)) + 50 * std::cos(y * 0.013);
                const auto now = static_cast<quint8>(std::clamp(light + grain(random), 0.0, 255.0));
                bytes.push_back(static_cast<quint8>(now - before[c]));
                before[c] = now;
            }
        }
    }
    return bytes;
}

struct Sample
{
    Bytes plain;
    Bytes packed;
};

Sample pack(Bytes plain)
{
    z_stream state{};
    deflateInit2(&state, 6, Z_DEFLATED, -15, 8, Z_DEFAULT_STRATEGY);
    Bytes packed(deflateBound(&state, plain.size()));
    state.next_in = plain.data();
    state.avail_in = static_cast<uInt>(plain.size());
    state.next_out = packed.data();
    state.avail_out = static_cast<uInt>(packed.size());
    deflate(&state, Z_FINISH);
    packed.resize(state.total_out);
    deflateEnd(&state);
    return {std::move(plain), std::move(packed)};
}

void ours(benchmark::State &state, const Sample &sample)
{
    Bytes output(sample.plain.size());
    for (auto _ : state)
        benchmark::DoNotOptimize(plum::Inflate(sample.packed, output, false));
    if (output != sample.plain)
        state.SkipWithError("wrong output");
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * sample.plain.size()));
}

void zlibs(benchmark::State &state, const Sample &sample)
{
    Bytes output(sample.plain.size());
    Bytes packed = sample.packed;
    for (auto _ : state) {
        z_stream stream{};
        inflateInit2(&stream, -15);
        stream.next_in = packed.data();
        stream.avail_in = static_cast<uInt>(packed.size());
        stream.next_out = output.data();
        stream.avail_out = static_cast<uInt>(output.size());
        benchmark::DoNotOptimize(inflate(&stream, Z_FINISH));
        inflateEnd(&stream);
    }
    if (output != sample.plain)
        state.SkipWithError("wrong output");
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * sample.plain.size()));
}

void libdeflates(benchmark::State &state, const Sample &sample)
{
    Bytes output(sample.plain.size());
    libdeflate_decompressor *decompressor = libdeflate_alloc_decompressor();
    for (auto _ : state) {
        benchmark::DoNotOptimize(libdeflate_deflate_decompress(
            decompressor, sample.packed.data(), sample.packed.size(), output.data(), output.size(), nullptr));
    }
    libdeflate_free_decompressor(decompressor);
    if (output != sample.plain)
        state.SkipWithError("wrong output");
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * sample.plain.size()));
}

} // namespace

int main(int argc, char **argv)
{
    const std::vector<std::pair<std::string, Sample>> samples{
        {"text", pack(text())}, {"binary", pack(binary())}, {"picture", pack(picture())}};
    for (const auto &[name, sample] : samples) {
        benchmark::RegisterBenchmark(("inflate/" + name + "/plum").c_str(), ours, sample);
        benchmark::RegisterBenchmark(("inflate/" + name + "/libdeflate").c_str(), libdeflates, sample);
        benchmark::RegisterBenchmark(("inflate/" + name + "/zlib").c_str(), zlibs, sample);
    }
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
