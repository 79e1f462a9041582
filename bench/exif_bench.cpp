// Headers a second against libexif on the same pictures. Each side gives what a program shows of a picture: ours fills
// its record, libexif its entries. From memory, through a stream over memory, and from files.
#include <Exif.h>
#include <benchmark/benchmark.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <vector>
#ifdef BENCH_LIBEXIF
#include <libexif/exif-data.h>
#endif

namespace {

namespace fs = std::filesystem;

struct Picture {
    std::string path;
    std::vector<unsigned char> bytes;
};

// The pictures with EXIF among the test data; with `large`, each as a camera writes it: a thumbnail of 12 KB, then as
// much as 2 MB of image data.
std::vector<Picture> pictures(bool large) {
    std::vector<Picture> all;
    for (const char* name : {"camera_intel", "camera_motorola", "rotated", "apex", "progressive", "grey", "pillow"}) {
        Picture picture{TOOL_SOURCE_DIR "/tests/exif/data/" + std::string(name) + ".jpg", {}};
        std::ifstream in(picture.path, std::ios::binary);
        picture.bytes.assign(std::istreambuf_iterator<char>(in), {});
        if (large) {
            std::vector<unsigned char>& bytes = picture.bytes;
            const std::size_t exif = 4;  // the length of the first segment, which is EXIF's
            const std::size_t length = static_cast<std::size_t>(bytes[exif] << 8 | bytes[exif + 1]), more = 12'000;
            bytes.insert(bytes.begin() + static_cast<std::ptrdiff_t>(exif + length), more, 0x55);
            bytes[exif] = static_cast<unsigned char>((length + more) >> 8);
            bytes[exif + 1] = static_cast<unsigned char>(length + more);
            bytes.insert(bytes.end(), 2'000'000, 0x55);
        }
        all.push_back(std::move(picture));
    }
    return all;
}

// The same as files.
class Folder {
 public:
    explicit Folder(std::vector<Picture>& all) : path_(fs::temp_directory_path() / "exif_bench") {
        fs::create_directories(path_);
        for (Picture& picture : all) {
            picture.path = path_ / fs::path(picture.path).filename();
            std::ofstream(picture.path, std::ios::binary)
                .write(reinterpret_cast<const char*>(picture.bytes.data()),
                       static_cast<std::streamsize>(picture.bytes.size()));
        }
    }
    ~Folder() { fs::remove_all(path_); }

 private:
    fs::path path_;
};

// `read` tells whether it found a header; the argument of the benchmark says whether pictures are large.
template <class Read>
void measure(benchmark::State& state, bool from_files, Read read) {
    std::vector<Picture> all = pictures(state.range(0) != 0);
    std::unique_ptr<Folder> folder;
    if (from_files) folder = std::make_unique<Folder>(all);
    for (auto _ : state)
        for (const Picture& picture : all)
            if (!read(picture)) return state.SkipWithError("no header");
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(all.size()));
}

void Memory_CExif(benchmark::State& state) {
    measure(state, false, [](const Picture& picture) {
        CExif reader;
        return reader.DecodeExif(picture.bytes.data(), picture.bytes.size()) && reader.Info->IsExif;
    });
}
BENCHMARK(Memory_CExif)->Arg(0)->Arg(1);

void MemoryStream_CExif(benchmark::State& state) {
    measure(state, false, [](const Picture& picture) {
        std::FILE* const stream =
            fmemopen(const_cast<unsigned char*>(picture.bytes.data()), picture.bytes.size(), "rb");
        CExif reader;
        const bool good = reader.DecodeExif(stream) && reader.Info->IsExif;
        std::fclose(stream);
        return good;
    });
}
BENCHMARK(MemoryStream_CExif)->Arg(0)->Arg(1);

void File_CExif(benchmark::State& state) {
    measure(state, true, [](const Picture& picture) {
        std::FILE* const stream = std::fopen(picture.path.c_str(), "rb");
        CExif reader;
        const bool good = reader.DecodeExif(stream) && reader.Info->IsExif;
        std::fclose(stream);
        return good;
    });
}
BENCHMARK(File_CExif)->Arg(0)->Arg(1);

#ifdef BENCH_LIBEXIF
bool found(ExifData* data) {
    if (!data) return false;
    const bool good = data->ifd[EXIF_IFD_0]->count > 0;
    exif_data_unref(data);
    return good;
}

void Memory_LibExif(benchmark::State& state) {
    measure(state, false, [](const Picture& picture) {
        return found(exif_data_new_from_data(picture.bytes.data(), static_cast<unsigned>(picture.bytes.size())));
    });
}
BENCHMARK(Memory_LibExif)->Arg(0)->Arg(1);

void File_LibExif(benchmark::State& state) {
    measure(state, true, [](const Picture& picture) { return found(exif_data_new_from_file(picture.path.c_str())); });
}
BENCHMARK(File_LibExif)->Arg(0)->Arg(1);
#endif

}  // namespace
