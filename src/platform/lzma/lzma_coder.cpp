// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/lzma/lzma_coder.h"

#include <QByteArray>
#include <QtEndian>
#include <algorithm>
#include <array>
#include <lzma.h>
#include <new>

namespace Lzma_Coder
{
namespace
{
constexpr qint64 Header_Size = 13;
constexpr quint32 Dictionary_Size = 1U << 23;
/// A decoder's dictionary never grows beyond this, whatever a header asks for; no encoder preset uses more than 64 MiB.
constexpr quint32 Largest_Dictionary = 1U << 28;
constexpr quint64 Unknown_Size = ~Q_UINT64_C(0);
constexpr qint64 Block_Size = 1 << 16;

/// The library's state for one stream, freed with its owner.
class Coder
{
public:
    Coder() : m_input(Block_Size, Qt::Uninitialized), m_output(Block_Size, Qt::Uninitialized) {}
    ~Coder() { lzma_end(&m_stream); }
    Q_DISABLE_COPY_MOVE(Coder)

    using Start = lzma_ret (*)(lzma_stream *, const lzma_filter *);
    bool Begin(Start start, lzma_options_lzma &options)
    {
        const std::array<lzma_filter, 2> filters{{{LZMA_FILTER_LZMA1EXT, &options}, {LZMA_VLI_UNKNOWN, nullptr}}};
        const lzma_ret result = start(&m_stream, filters.data());
        if (result == LZMA_MEM_ERROR)
            throw std::bad_alloc();
        return result == LZMA_OK;
    }

    /// Codes until the output is full, at most `most` bytes, or nothing more comes.
    lzma_ret Next(const Source &source, quint64 most = Unknown_Size)
    {
        m_stream.next_out = reinterpret_cast<uint8_t *>(m_output.data());
        m_stream.avail_out = std::min<quint64>(most, Block_Size);
        lzma_ret result = LZMA_OK;
        while (result == LZMA_OK && m_stream.avail_out > 0) {
            if (m_stream.avail_in == 0 && !m_sourceEnded) {
                const qint64 size = source(m_input.data(), m_input.size());
                m_sourceEnded = size == 0;
                m_stream.next_in = reinterpret_cast<const uint8_t *>(m_input.constData());
                m_stream.avail_in = static_cast<size_t>(size);
            }
            result = lzma_code(&m_stream, m_sourceEnded ? LZMA_FINISH : LZMA_RUN);
        }
        return result;
    }

    [[nodiscard]] const char *Output() const { return m_output.constData(); }
    [[nodiscard]] qint64 Output_Size() const
    {
        return reinterpret_cast<const char *>(m_stream.next_out) - m_output.constData();
    }
    [[nodiscard]] quint64 Total_In() const { return m_stream.total_in; }
    [[nodiscard]] quint64 Total_Out() const { return m_stream.total_out; }

private:
    lzma_stream m_stream = LZMA_STREAM_INIT;
    QByteArray m_input;
    QByteArray m_output;
    bool m_sourceEnded = false;
};

void Set_Size(lzma_options_lzma &options, quint64 size)
{
    options.ext_size_low = static_cast<quint32>(size);
    options.ext_size_high = static_cast<quint32>(size >> 32);
}

/// A dictionary larger than the text is of no use; the library refuses one under 4096 bytes.
quint32 Dictionary_For(quint64 size, quint32 largest)
{
    return static_cast<quint32>(std::clamp<quint64>(size, LZMA_DICT_SIZE_MIN, std::max(largest, LZMA_DICT_SIZE_MIN)));
}

QByteArray Header(const lzma_options_lzma &options, quint64 size)
{
    QByteArray header(Header_Size, '\0');
    header[0] = static_cast<char>((options.pb * 5 + options.lp) * 9 + options.lc);
    qToLittleEndian(Dictionary_Size, header.data() + 1);
    qToLittleEndian(size, header.data() + 5);
    return header;
}

QByteArray Read_Header(const Source &stream)
{
    QByteArray header(Header_Size, '\0');
    qint64 had = 0;
    while (had < Header_Size) {
        const qint64 size = stream(header.data() + had, Header_Size - had);
        if (size <= 0)
            return {};
        had += size;
    }
    return header;
}

/// The properties byte holds (pb * 5 + lp) * 9 + lc.
lzma_options_lzma Options_Of(const QByteArray &header, quint64 size, quint64 limit)
{
    const quint32 properties = static_cast<quint8>(header.at(0));
    lzma_options_lzma options{};
    options.lc = properties % 9;
    options.lp = properties / 9 % 5;
    options.pb = properties / 45; // the library refuses what is too large
    const quint32 asked = qFromLittleEndian<quint32>(header.constData() + 1);
    options.dict_size = Dictionary_For(std::min(size, limit), std::min(asked, Largest_Dictionary));
    options.ext_flags = LZMA_LZMA1EXT_ALLOW_EOPM; // some encoders write the marker although they know the size
    Set_Size(options, size);
    return options;
}
} // namespace

bool Encode(const Source &plain, quint64 plainSize, const Sink &stream)
{
    lzma_options_lzma options{};
    lzma_lzma_preset(&options, LZMA_PRESET_DEFAULT); // lc 3, lp 0, pb 2, match finder bt4
    options.dict_size = Dictionary_For(plainSize, Dictionary_Size);
    Set_Size(options, plainSize);
    Coder coder;
    if (!coder.Begin(lzma_raw_encoder, options))
        return false;
    const QByteArray header = Header(options, plainSize);
    stream(header.constData(), header.size());
    lzma_ret result = LZMA_OK;
    while (result == LZMA_OK) {
        result = coder.Next(plain);
        stream(coder.Output(), coder.Output_Size());
    }
    return result == LZMA_STREAM_END && coder.Total_In() == plainSize;
}

Outcome Decode(const Source &stream, const Sink &plain, quint64 limit)
{
    Outcome outcome;
    const QByteArray header = Read_Header(stream);
    if (header.isEmpty())
        return outcome;
    const quint64 size = qFromLittleEndian<quint64>(header.constData() + 5);
    outcome.sizeKnown = size != Unknown_Size;
    lzma_options_lzma options = Options_Of(header, size, limit);
    Coder coder;
    if (!coder.Begin(lzma_raw_decoder, options))
        return outcome;
    const quint64 wanted = std::min(size, limit);
    lzma_ret result = LZMA_OK;
    while (result == LZMA_OK && (coder.Total_Out() < wanted || !outcome.sizeKnown)) {
        const quint64 room = wanted - coder.Total_Out();
        result = coder.Next(stream, std::max<quint64>(room, 1)); // one more shows the end marker, or too much
        plain(coder.Output(), std::min<qint64>(coder.Output_Size(), static_cast<qint64>(room)));
        if (coder.Total_Out() > wanted)
            return outcome;
    }
    outcome.understood = !outcome.sizeKnown || size <= limit;
    outcome.complete = outcome.sizeKnown ? coder.Total_Out() == size : result == LZMA_STREAM_END;
    outcome.missing = outcome.sizeKnown ? size - coder.Total_Out() : 0;
    return outcome;
}
} // namespace Lzma_Coder
