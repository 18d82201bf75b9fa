#include "television/generator/event_plan.h"

#include <algorithm>
#include <iterator>

#include <fmt/format.h>

#include "television/base/calendar.h"

namespace stream_generator {
namespace {

using television::kSecondsOfDay;

/** A programme that fills a place in the day, in the two languages that services have. */
struct Show {
    uint8_t genre;  ///< both nibbles of the content descriptor
    uint8_t age;    ///< minimum age; 0: not rated
    uint16_t minutes;
    const char* english;
    const char* german;
    const char* englishText;
    const char* germanText;
};

constexpr Show kShows[] = {
        {0x21, 0, 15, "News", "Nachrichten", "What happened in the last hours.",
         "Was in den letzten Stunden geschah."},
        {0x24, 0, 30, "The Round Table", "Im Gespräch", "Four guests, one question.",
         "Vier Gäste, eine Frage."},
        {0x10, 12, 105, "The Long Way North", "Die Brücke über den Fluß",
         "A ferry captain looks for the sister whom nobody has seen for twenty years.",
         "Ein Fährmann sucht seine Schwester, die seit zwanzig Jahren verschollen ist."},
        {0x11, 16, 95, "Night Shift", "Dunkle Wälder",
         "A detective has until dawn to find out who sent the letter.",
         "Eine Kommissarin hat bis zum Morgengrauen Zeit für ihren größten Fall."},
        {0x14, 6, 45, "The Grocers", "Über den Dächern",
         "The shop gets a new neighbour, and the neighbour a new till.",
         "Der Nachbar züchtet jetzt Bienen, und das ganze Haus hört zu."},
        {0x43, 0, 110, "Football: League Match", "Fußball: Ligaspiel", "Live from the capital.",
         "Live aus der Hauptstadt, mit Gesprächen nach dem Spiel."},
        {0x55, 0, 25, "Otter and Owl", "Die kleine Möwe", "For children from four.",
         "Für Kinder ab vier."},
        {0x91, 0, 50, "Glaciers", "Das Rätsel der Gletscher", "Why the ice sings before it breaks.",
         "Warum das Eis singt, bevor es bricht."},
        {0xA5, 0, 30, "One Pot", "Küchengeheimnisse", "Soup for a rainy day.",
         "Eine Suppe für trübe Tage."},
        {0x60, 0, 60, "Evening Concert", "Abendkonzert", "The radio orchestra plays two suites.",
         "Das Rundfunkorchester spielt zwei Suiten für Bläser."},
        {0x30, 6, 75, "Who Knows More?", "Wer weiß mehr?", "Two families, fifty questions.",
         "Zwei Familien, fünfzig Fragen."},
        {0x18, 18, 100, "The Last Witness", "Der letzte Zeuge",
         "Nobody believes what the lighthouse keeper saw.",
         "Niemand glaubt, was der Leuchtturmwärter gesehen hat."},
};

/** A number that looks random, and is the same for the same arguments. */
uint32_t pseudoRandom(uint32_t a, uint32_t b) {
    uint32_t x = a * 0x9E3779B1u ^ b * 0x85EBCA77u;
    x = (x ^ x >> 15) * 0x2C1B3C6Du;
    x = (x ^ x >> 12) * 0x297A2D39u;
    return x ^ x >> 15;
}

bool speaksGerman(const ServicePlan& service) {
    return service.serviceId % 3 == 0 && service.table != TextTable::kIso8859_5 &&
           service.table != TextTable::kIso8859_7;
}

void addDetails(EventPlan& event, bool german, uint32_t episode) {
    if (german) {
        event.items = {{"Regie", "Jörg Müßig"}, {"Darsteller", "Änne Köhler, Götz Überall"}};
        event.details = fmt::format(
                "Folge {}. Früh am Morgen hört man über den Höfen nur die Möwen; dann öffnet der "
                "Bäcker, und mit ihm kommt die Geschichte ins Rollen.",
                episode);
    } else {
        event.items = {{"Director", "Jo Maren"}, {"Cast", "Ann Coller, Gil Overton"}};
        event.details = fmt::format(
                "Episode {}. Early in the morning there is nothing to be heard above the yards but "
                "gulls; then the baker opens, and the story begins with him.",
                episode);
    }
    event.programmeId =
            fmt::format("crid://corvanta.example/{:x}", pseudoRandom(event.eventId, episode));
    event.seriesId = fmt::format("crid://corvanta.example/series/{}", episode % 7);
}

EventPlan makeEvent(const ServicePlan& service, const Show& show, int64_t start) {
    const bool german = speaksGerman(service);
    EventPlan event;
    event.eventId = static_cast<uint16_t>(start / 60);  // the same when the stream is made anew
    event.start = start;
    event.language = german ? "deu" : "eng";
    event.title = german ? show.german : show.english;
    event.text = german ? show.germanText : show.englishText;
    event.genre = show.genre;
    event.age = show.age;
    if (service.guide == GuideKind::kExtended) {
        addDetails(event, german, pseudoRandom(service.serviceId, event.eventId) % 90 + 1);
    }
    return event;
}

}  // namespace

std::vector<EventPlan> eventPlans(const ServicePlan& service, int64_t time, unsigned hours) {
    std::vector<EventPlan> events;
    if (service.guide == GuideKind::kNone || hours == 0) return events;
    const int64_t end = time + int64_t{hours} * 3600;
    int64_t day = television::floorDivide(time, kSecondsOfDay);
    for (; day * kSecondsOfDay < end; ++day) {
        const int64_t midnight = day * kSecondsOfDay;
        int64_t start = midnight;
        for (uint32_t place = 0; start < midnight + kSecondsOfDay && start < end; ++place) {
            const uint32_t number =
                    pseudoRandom(service.serviceId, static_cast<uint32_t>(day) * 100 + place);
            const Show& show = kShows[number % std::size(kShows)];
            EventPlan event = makeEvent(service, show, start);
            event.duration = static_cast<uint32_t>(
                    std::min<int64_t>(show.minutes * 60, midnight + kSecondsOfDay - start));
            start += event.duration;
            if (start > time) events.push_back(std::move(event));
        }
    }
    return events;
}

}  // namespace stream_generator
