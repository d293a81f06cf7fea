#include "ai/SubjectTable.h"

namespace quilmora {

namespace {

// Daily life: health, food, family and home.
constexpr WrittenSubject homeRows[] = {
    {u"health", u"Sleep, Nutrition, Fitness, Stress, Checkups, Mindfulness, Relationships"},
    {u"wedding", u"Guest List, Budget, Venue, Ceremony, Catering, Photographer, Invitations"},
    {u"recipe", u"Ingredients, Equipment, Preparation, Method, Seasoning, Plating, Leftovers"},
    {u"fitness", u"Strength Training, Running, Yoga, Nutrition, Recovery, Weekly Plan, Progress Tracking"},
    {u"move", u"Timeline, Packing, Utilities, Address Changes, Cleaning, Transport, Setup"},
    {u"food", u"Cuisines, Cooking, Nutrition, Baking, Coffee, Wine, Street Food"},
    {u"cuisines", u"Italian, Japanese, Mexican, Indian, French, Thai, Greek"},
    {u"italian", u"Pasta, Pizza, Risotto, Antipasti, Cheese, Gelato"},
    {u"japanese", u"Sushi, Ramen, Tempura, Donburi, Miso Soup, Matcha"},
    {u"mexican", u"Tacos, Enchiladas, Tamales, Mole, Guacamole, Churros"},
    {u"indian", u"Curries, Tandoori, Dal, Biryani, Flatbreads, Chutneys, Masala Chai"},
    {u"cooking", u"Knife Skills, Boiling, Roasting, Frying, Steaming, Sauces, Food Safety"},
    {u"nutrition", u"Protein, Carbohydrates, Fats, Fiber, Vitamins, Minerals, Hydration"},
    {u"baking", u"Bread, Cakes, Cookies, Pastry, Sourdough, Oven Control, Decorating"},
    {u"coffee", u"Espresso, Pour Over, French Press, Cold Brew, Roasting, Origins, Latte Art"},
    {u"wine", u"Grapes, Regions, Red Wine, White Wine, Sparkling Wine, Tasting, Food Pairing"},
    {u"gardening", u"Soil, Seeds, Watering, Composting, Pruning, Pests, Harvest"},
    {u"dogs", u"Breeds, Feeding, Training, Walks, Grooming, Health Checks"},
    {u"cats", u"Breeds, Feeding, Litter Box, Grooming, Play, Health Checks"},
    {u"parenting", u"Newborn Care, Sleep, Feeding, Play, Boundaries, School Years, Teenagers"},
    {u"relationships", u"Communication, Trust, Shared Values, Quality Time, Conflict, Boundaries, Support"},
    {u"mindfulness", u"Breathing, Body Scan, Meditation, Gratitude, Journaling, Mindful Eating, Daily Routine"},
    {u"fashion", u"Wardrobe Basics, Fabrics, Color, Fit, Accessories, Shoes, Sustainable Fashion"},
    {u"interior design", u"Living Room, Bedroom, Kitchen, Bathroom, Color Palette, Furniture, Lighting"},
    {u"car", u"Buying, Insurance, Maintenance, Tires, Fuel or Electric, Road Safety"},
};

}  // namespace

std::span<const WrittenSubject> homeSubjects() {
  return homeRows;
}

}  // namespace quilmora
