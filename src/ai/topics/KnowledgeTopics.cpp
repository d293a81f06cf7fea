#include "ai/SubjectTable.h"

namespace quilmora {

namespace {

// Sciences, professions and learning.
constexpr WrittenSubject knowledgeRows[] = {
    {u"learning",
     u"Motivation, Clear Goals, Active Recall, Spaced Repetition, Practice Projects, Feedback, "
     u"Reflection"},
    {u"course", u"Learning Outcomes, Syllabus, Lessons, Assignments, Assessment, Materials, Student Feedback"},
    {u"research", u"Question, Literature Review, Hypothesis, Methods, Data, Analysis, Findings"},
    {u"study", u"Timetable, Note Taking, Active Recall, Practice Tests, Study Group, Breaks, Exam Day"},
    {u"science", u"Physics, Chemistry, Biology, Astronomy, Mathematics, Psychology, Environment"},
    {u"physics",
     u"Mechanics, Thermodynamics, Electromagnetism, Optics, Quantum Physics, Relativity, "
     u"Particle Physics"},
    {u"chemistry", u"Atoms and Bonds, Organic, Inorganic, Physical, Analytical, Biochemistry, Lab Safety"},
    {u"biology", u"Cells, Genetics, Evolution, Plants, Animals, Ecology, Human Body"},
    {u"mathematics", u"Algebra, Geometry, Calculus, Statistics, Number Theory, Logic, Topology"},
    {u"history",
     u"Prehistory, Ancient Civilizations, Middle Ages, Renaissance, Industrial Revolution, "
     u"World Wars, Cold War"},
    {u"philosophy",
     u"Metaphysics, Epistemology, Ethics, Logic, Political Philosophy, Aesthetics, "
     u"Philosophy of Mind"},
    {u"psychology", u"Cognition, Emotion, Development, Personality, Social Behavior, Mental Health, Experiments"},
    {u"languages", u"Vocabulary, Grammar, Pronunciation, Listening, Speaking, Reading, Writing, Culture"},
    {u"astronomy", u"Solar System, Stars, Galaxies, Black Holes, Exoplanets, Cosmology, Telescopes"},
    {u"environment", u"Climate Change, Air Quality, Ocean, Forests, Biodiversity, Waste, Renewable Energy"},
    {u"engineering", u"Civil, Mechanical, Electrical, Chemical, Software, Aerospace, Biomedical"},
    {u"medicine", u"Anatomy, Diagnosis, Surgery, Pharmacology, Pediatrics, Emergency Care, Public Health"},
    {u"law",
     u"Constitutional Law, Criminal Law, Contract Law, Family Law, Labor Law, Tax Law, "
     u"International Law"},
    {u"education",
     u"Early Childhood, Primary School, Secondary School, Higher Education, Vocational Training, "
     u"Teaching, Assessment"},
    {u"teaching",
     u"Lesson Planning, Classroom Management, Clear Explanation, Questioning, Group Work, Assessment, "
     u"Feedback"},
    {u"journalism", u"Story Ideas, Sources, Interviews, Fact-Checking, Writing, Editing, Ethics"},
    {u"architecture building", u"Residential, Commercial, Landscape, Interior, Sustainable, Urban Planning"},
    {u"space",
     u"The Sun, Inner Planets, Outer Planets, Moons, Asteroids and Comets, Stars and Galaxies, "
     u"Space Missions"},
    {u"ocean", u"Currents, Tides, Coral Reefs, Deep Sea, Marine Life, Fishing, Conservation"},
    {u"animals", u"Mammals, Birds, Reptiles, Amphibians, Fish, Insects, Dogs, Cats"},
    {u"plants", u"Trees, Flowers, Grasses, Ferns, Photosynthesis, Gardening"},
};

}  // namespace

std::span<const WrittenSubject> knowledgeSubjects() {
  return knowledgeRows;
}

}  // namespace quilmora
