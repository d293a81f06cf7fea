#include "ai/SubjectTable.h"

namespace quilmora {

namespace {

// Arts, sports and journeys.
constexpr WrittenSubject leisureRows[] = {
    {u"book", u"Premise, Characters, Setting, Plot, Themes, Style, Ending"},
    {u"essay", u"Question, Thesis, Outline, Evidence, Counterarguments, Conclusion, Revision"},
    {u"travel", u"Destination, Budget, Transport, Lodging, Itinerary, Packing, Documents"},
    {u"event", u"Purpose, Guest List, Venue, Budget, Program, Catering, Promotion"},
    {u"story", u"Premise, Characters, Setting, Conflict, Plot Twists, Climax, Resolution"},
    {u"film", u"Screenplay, Casting, Locations, Cinematography, Directing, Editing, Sound, Distribution"},
    {u"music", u"Melody, Harmony, Rhythm, Instruments, Genres, Songwriting, Recording"},
    {u"podcast", u"Concept, Audience, Episode Format, Guests, Recording, Editing, Promotion"},
    {u"writing", u"Idea, Audience, Outline, First Draft, Revision, Style, Publishing"},
    {u"photography", u"Camera, Lenses, Exposure, Composition, Light, Portraits, Landscapes, Retouching"},
    {u"game", u"Core Loop, Story, Characters, Level Design, Art Style, Sound, Balancing, Playtesting"},
    {u"sports", u"Football, Basketball, Tennis, Swimming, Running, Cycling, Gymnastics"},
    {u"football", u"Rules, Positions, Formations, Passing, Set Pieces, Defending, Competitions"},
    {u"basketball", u"Rules, Positions, Dribbling, Shooting, Passing, Defense"},
    {u"yoga", u"Breathing, Standing Poses, Balances, Backbends, Sun Salutation, Meditation, Styles"},
    {u"chess", u"Openings, Middlegame, Endgame, Tactics, Positional Play, Notation, Time Control"},
    {u"painting", u"Composition, Color Mixing, Brushwork, Watercolor, Acrylics, Oils, Portraits"},
    {u"running", u"Shoes, Warm-Up, Running Form, Endurance, Intervals, Recovery, Race Day"},
    {u"motorcycle", u"License, Riding Gear, Bike Types, Maintenance, Road Safety, Touring"},
    {u"camping", u"Campsite, Tent, Sleeping Gear, Camp Kitchen, Clothing, First Aid, Leave No Trace"},
};

}  // namespace

std::span<const WrittenSubject> leisureSubjects() {
  return leisureRows;
}

}  // namespace quilmora
