#include "support/versionedfile.h"

#include <QtEndian>

namespace tavik::test {

namespace {

constexpr std::uint32_t kFileAlignment = 0x200;
constexpr std::uint32_t kSectionAlignment = 0x1000;
constexpr std::uint32_t kResourceRva = 0x1000;

class Bytes {
public:
    void u16(std::uint16_t v) { put(v); }
    void u32(std::uint32_t v) { put(v); }
    void u64(std::uint64_t v) { put(v); }
    void text(const char* t, qsizetype n) { data.append(t, n); }
    void padTo(qsizetype size) { data.append(QByteArray(size - data.size(), '\0')); }
    void alignTo(qsizetype n) {
        while (data.size() % n != 0)
            data.append('\0');
    }
    QByteArray data;

private:
    template <typename T> void put(T v) {
        uchar b[sizeof(T)];
        qToLittleEndian(v, b);
        data.append(reinterpret_cast<const char*>(b), sizeof(T));
    }
};

std::uint32_t aligned(std::uint32_t n, std::uint32_t to) {
    return (n + to - 1) / to * to;
}

// The VS_VERSIONINFO block: header, the key "VS_VERSION_INFO" in UTF-16, padding, then the
// 52-byte fixed information.
QByteArray versionBlock(std::uint32_t ms, std::uint32_t ls, std::uint32_t fileType) {
    Bytes b;
    b.u16(0); // length, set below
    b.u16(52);
    b.u16(0); // binary
    for (const char c : QByteArrayLiteral("VS_VERSION_INFO"))
        b.u16(static_cast<std::uint16_t>(c));
    b.u16(0);
    b.alignTo(4);
    const std::uint32_t fixed[13] = {0xFEEF04BD, 0x10000, ms,       ls, ms, ls, 0x3F,
                                     0,          4,       fileType, 0,  0,  0};
    for (const std::uint32_t f : fixed)
        b.u32(f);
    qToLittleEndian(static_cast<std::uint16_t>(b.data.size()), b.data.data());
    return b.data;
}

// The resource section: type 16 (version), name 1, language 0x409, then the data.
QByteArray resourceSection(const QByteArray& version) {
    Bytes b;
    const auto directory = [&b](std::uint32_t id, std::uint32_t target) {
        for (int i = 0; i < 3; ++i)
            b.u32(0); // characteristics, time stamp, versions
        b.u16(0);     // named entries
        b.u16(1);     // id entries
        b.u32(id);
        b.u32(target);
    };
    directory(16, 0x80000000u | 0x18);
    directory(1, 0x80000000u | 0x30);
    directory(0x409, 0x48);
    b.u32(kResourceRva + 0x58); // the data's address in the image
    b.u32(static_cast<std::uint32_t>(version.size()));
    b.u32(0);
    b.u32(0);
    b.padTo(0x58);
    b.data.append(version);
    return b.data;
}

} // namespace

QByteArray ProgramWithVersionResource(std::uint32_t versionMs, std::uint32_t versionLs,
                                      std::uint32_t fileType) {
    const QByteArray rsrc = resourceSection(versionBlock(versionMs, versionLs, fileType));
    const auto rsrcSize = static_cast<std::uint32_t>(rsrc.size());
    const std::uint32_t rawSize = aligned(rsrcSize, kFileAlignment);
    Bytes b;
    // DOS header: the signature and where the PE header starts.
    b.text("MZ", 2);
    b.padTo(0x3C);
    b.u32(0x40);
    b.text("PE\0\0", 4);
    // File header: x86-64, one section, an executable DLL image.
    b.u16(0x8664);
    b.u16(1);
    b.u32(0);
    b.u32(0);
    b.u32(0);
    b.u16(240);
    b.u16(0x2022);
    // Optional header (PE32+).
    b.u16(0x20B);
    b.u16(0);
    b.u32(0);       // size of code
    b.u32(rawSize); // initialised data
    b.u32(0);
    b.u32(0); // entry point: none
    b.u32(kResourceRva);
    b.u64(0x180000000ULL);
    b.u32(kSectionAlignment);
    b.u32(kFileAlignment);
    b.u16(6); // operating system version
    b.u16(0);
    b.u16(0); // image version
    b.u16(0);
    b.u16(6); // subsystem version
    b.u16(0);
    b.u32(0);
    b.u32(kResourceRva + aligned(rsrcSize, kSectionAlignment)); // size of image
    b.u32(kFileAlignment);                                      // size of headers
    b.u32(0);                                                   // checksum
    b.u16(2);                                                   // GUI subsystem
    b.u16(0);
    b.u64(0x100000);
    b.u64(0x1000);
    b.u64(0x100000);
    b.u64(0x1000);
    b.u32(0);
    b.u32(16);
    for (int i = 0; i < 16; ++i) {
        b.u32(i == 2 ? kResourceRva : 0); // entry 2: the resources
        b.u32(i == 2 ? rsrcSize : 0);
    }
    // The one section.
    b.text(".rsrc\0\0\0", 8);
    b.u32(rsrcSize);
    b.u32(kResourceRva);
    b.u32(rawSize);
    b.u32(kFileAlignment);
    b.u32(0);
    b.u32(0);
    b.u16(0);
    b.u16(0);
    b.u32(0x40000040); // initialised data, readable
    b.padTo(kFileAlignment);
    b.data.append(rsrc);
    b.padTo(kFileAlignment + rawSize);
    return b.data;
}

} // namespace tavik::test
