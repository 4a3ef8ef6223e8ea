#include "grid.hpp"

#include <cerrno>
#include <charconv>
#include <cstring>
#include <fstream>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace terrain {

namespace {

struct Range {
    double lowest;
    double highest;
    const char* message;
};

constexpr Range latitudeRange{-90, 90, "latitude outside -90 to 90 degrees"};
constexpr Range longitudeRange{-180, 360, "longitude outside -180 to 360 degrees"};
// Holds every place on Earth, and none of the usual marks of missing data (-32768, -99999, ...).
constexpr Range heightRange{-12000, 12000, "height outside -12000 to 12000 metres"};

/// The file, line by line, with what an error message needs to say where it is.
class CsvReader {
public:
    explicit CsvReader(const std::filesystem::path& file) : name(file.string()), stream(file) {
        if (!stream) {
            FailToRead();
        }
    }

    /// Moves on to the next line; false at the end of the file.
    bool Next() {
        errno = 0;
        if (!std::getline(stream, line)) {
            if (stream.bad()) {
                FailToRead();
            }
            return false;
        }
        ++lineNumber;
        if (line.ends_with('\r')) {
            line.pop_back();
        }
        rest = line;
        column = 0;
        return true;
    }

    /// The next cell of the line as it stands; nothing at the end of the line.
    std::optional<std::string_view> Cell() {
        if (!rest) {
            return std::nullopt;
        }
        ++column;
        const std::size_t comma = rest->find(',');
        const std::string_view cell = rest->substr(0, comma);
        if (comma == std::string_view::npos) {
            rest.reset();
        } else {
            rest->remove_prefix(comma + 1);
        }
        return cell;
    }

    /// The next cell of the line as a number within a range; nothing at the end of the line.
    std::optional<double> Number(const Range& range) {
        const std::optional<std::string_view> cell = Cell();
        if (!cell) {
            return std::nullopt;
        }
        const char* const last = cell->data() + cell->size();
        double value = 0;
        const auto [end, error] = std::from_chars(cell->data(), last, value);
        if (error == std::errc::invalid_argument || end != last) {
            Fail("not a number");
        }
        // The negation also refuses a NaN.
        if (error != std::errc{} || !(value >= range.lowest && value <= range.highest)) {
            Fail(range.message);
        }
        return value;
    }

    /// Ends the reading with an error at the cell that was read last.
    [[noreturn]] void Fail(const std::string& message) const {
        throw std::runtime_error(name + ": line " + std::to_string(lineNumber) + ", column " +
                                 std::to_string(column) + ": " + message);
    }

private:
    [[noreturn]] void FailToRead() const {
        throw std::runtime_error(name + ": cannot read: " + std::strerror(errno));
    }

    std::string name;
    std::ifstream stream;
    std::string line;
    std::optional<std::string_view> rest;
    std::size_t lineNumber = 0;
    std::size_t column = 0;
};

/// Appends a coordinate that must lie beyond the one before it.
void AppendCoordinate(std::vector<double>& axis, double value, const CsvReader& csv,
                      const char* message) {
    if (!axis.empty() && value <= axis.back()) {
        csv.Fail(message);
    }
    axis.push_back(value);
}

} // namespace

Grid ReadGrid(const std::filesystem::path& file) {
    CsvReader csv(file);
    Grid grid;
    if (!csv.Next()) {
        throw std::runtime_error(file.string() + ": the file is empty");
    }
    csv.Cell(); // the corner above the latitudes only names the axes
    while (const auto longitude = csv.Number(longitudeRange)) {
        AppendCoordinate(grid.longitudes, *longitude, csv,
                         "longitudes must grow from west to east");
    }
    if (grid.longitudes.empty()) {
        csv.Fail("no longitudes");
    }
    while (csv.Next()) {
        const auto latitude = csv.Number(latitudeRange);
        AppendCoordinate(grid.latitudes, *latitude, csv, "latitudes must grow from south to north");
        while (const auto height = csv.Number(heightRange)) {
            grid.heights.push_back(*height);
        }
        if (grid.heights.size() != grid.Rows() * grid.Columns()) {
            csv.Fail("the row ends here, but the first row has " +
                     std::to_string(grid.Columns() + 1) + " cells");
        }
    }
    if (grid.latitudes.empty()) {
        csv.Fail("no heights below the first row");
    }
    return grid;
}

} // namespace terrain
