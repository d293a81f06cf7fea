#include <QSet>
#include <gtest/gtest.h>

#include "ai/SubjectTable.h"
#include "support/QtPrinters.h"

namespace quilmora {

namespace {

QString rowOf(const char16_t* key) {
  const Subject* row = subjectOf(QString::fromUtf16(key));
  return row ? row->titles.join(QStringLiteral(", ")) : QStringLiteral("no row");
}
QString closest(const char16_t* title) {
  const Subject* row = closestSubject(QString::fromUtf16(title));
  return row ? row->key : QStringLiteral("no row");
}

}  // namespace

TEST(TopicTable, Has118RowsOf816Titles) {
  qsizetype titles = 0;
  QSet<QString> keys;
  for (const Subject& row : subjectTable()) {
    titles += row.titles.size();
    keys.insert(row.key);
    EXPECT_GE(row.titles.size(), 4) << row.key.toStdString();
    EXPECT_LE(row.titles.size(), 8) << row.key.toStdString();
    EXPECT_EQ(row.key, row.key.toLower());
    EXPECT_LE(row.key.count(u' '), 1);
  }
  EXPECT_EQ(subjectTable().size(), 118u);
  EXPECT_EQ(keys.size(), 118);
  EXPECT_EQ(titles, 816);
}

TEST(TopicTable, TitlesAreWholeDifferentAndInTitleCase) {
  for (const Subject& row : subjectTable()) {
    EXPECT_EQ(QSet<QString>(row.titles.begin(), row.titles.end()).size(), row.titles.size()) << row.key.toStdString();
    for (const QString& title : row.titles) {
      EXPECT_EQ(title, title.trimmed());
      ASSERT_FALSE(title.isEmpty()) << row.key.toStdString();
      EXPECT_TRUE(title.front().isUpper()) << title.toStdString();
      EXPECT_FALSE(title.contains(u','));
    }
  }
}

TEST(TopicTable, HasEveryKey) {
  const QString keys = QStringLiteral(
      "marketing, business, startup, product, strategy, sales, finance, software, app, web, mobile, ai, data, "
      "security, "
      "cloud, devops, api, project, agile, planning, team, design, ux, brand, learning, course, research, study, book, "
      "essay, goals, health, travel, event, wedding, recipe, fitness, budget, move, story, film, music, podcast, "
      "presentation, writing, photography, game, capitals, countries, geography, europe, asia, north america, south "
      "america, africa, oceania, middle east, science, physics, chemistry, biology, mathematics, history, philosophy, "
      "psychology, languages, astronomy, environment, food, cuisines, italian, japanese, mexican, indian, cooking, "
      "nutrition, baking, coffee, wine, careers, occupation, engineering, medicine, law, education, teaching, "
      "journalism, architecture building, sports, football, basketball, yoga, gardening, chess, painting, running, "
      "animals, dogs, cats, ocean, space, plants, parenting, relationships, mindfulness, fashion, interior design, "
      "car, "
      "motorcycle, camping, investing, entrepreneurship, seo, social media, architecture, testing, deployment, "
      "authentication");
  for (const QString& key : keys.split(QStringLiteral(", "))) EXPECT_NE(subjectOf(key), nullptr) << key.toStdString();
}

TEST(TopicTable, HasTheRowsThatOthersRelyOn) {
  EXPECT_EQ(rowOf(u"marketing"),
            QStringLiteral("Digital Marketing, Brand Strategy, Content, Analytics, Social Media, SEO, Email, Budget"));
  EXPECT_EQ(rowOf(u"ai"), QStringLiteral("Machine Learning, Deep Learning, NLP, Computer Vision, Data, Training, "
                                         "Deployment, Ethics"));
  EXPECT_EQ(rowOf(u"capitals"),
            QStringLiteral("Europe, Asia, North America, South America, Africa, Oceania, Middle East"));
  EXPECT_EQ(rowOf(u"europe"),
            QStringLiteral("France — Paris, Germany — Berlin, Italy — Rome, Spain — Madrid, UK — London, Poland — "
                           "Warsaw, Netherlands — Amsterdam"));
  EXPECT_EQ(rowOf(u"north america"),
            QStringLiteral("USA — Washington DC, Canada — Ottawa, Mexico — Mexico City, Cuba — Havana"));
  EXPECT_EQ(rowOf(u"middle east"), QStringLiteral("Turkey — Ankara, Saudi Arabia — Riyadh, UAE — Abu Dhabi, Israel — "
                                                  "Jerusalem, Iran — Tehran"));
  EXPECT_EQ(rowOf(u"coffee"),
            QStringLiteral("Espresso, Pour Over, French Press, Cold Brew, Roasting, Origins, Latte Art"));
  EXPECT_EQ(rowOf(u"architecture building"),
            QStringLiteral("Residential, Commercial, Landscape, Interior, Sustainable, Urban Planning"));
  EXPECT_TRUE(rowOf(u"architecture").startsWith(QStringLiteral("Patterns, Microservices, ")));
  EXPECT_EQ(rowOf(u"social media"),
            QStringLiteral("Platforms, Content Calendar, Engagement, Paid Ads, Analytics, Influencers"));
  EXPECT_EQ(rowOf(u"interior design"),
            QStringLiteral("Living Room, Bedroom, Kitchen, Bathroom, Color Palette, Furniture, Lighting"));
  EXPECT_EQ(rowOf(u"move"),
            QStringLiteral("Timeline, Packing, Utilities, Address Changes, Cleaning, Transport, Setup"));
  EXPECT_EQ(subjectOf(QStringLiteral("space"))->titles.size(), 7);
  for (const char16_t* cuisine : {u"Italian", u"Japanese", u"Mexican", u"Indian"})
    EXPECT_TRUE(subjectOf(QStringLiteral("cuisines"))->titles.contains(QString::fromUtf16(cuisine)));
}

TEST(TopicTable, AWordCountsWhereverItStands) {
  EXPECT_EQ(closest(u"Explain"), QStringLiteral("ai"));
  EXPECT_EQ(closest(u"Happy"), QStringLiteral("app"));
  EXPECT_EQ(closest(u"Career"), QStringLiteral("car"));
  EXPECT_EQ(closest(u"My Topic"), QStringLiteral("no row"));
  EXPECT_EQ(closest(u""), QStringLiteral("no row"));
  EXPECT_EQ(closest(u"日本"), QStringLiteral("no row"));
}

TEST(TopicTable, TwoWordsBeatOne) {
  EXPECT_EQ(closest(u"Modern Architecture Of A Building"), QStringLiteral("architecture building"));
  EXPECT_EQ(closest(u"Social Media Marketing"), QStringLiteral("social media"));
  EXPECT_EQ(closest(u"Interior Design"), QStringLiteral("interior design"));
}

TEST(TopicTable, AmongEqualsAWholeWordAndThenTheLongerOneCounts) {
  EXPECT_EQ(closest(u"Training Dogs"), QStringLiteral("dogs"));
  EXPECT_EQ(closest(u"Capitals"), QStringLiteral("capitals"));
  EXPECT_EQ(closest(u"Car Maintenance"), QStringLiteral("car"));
  EXPECT_EQ(closest(u"AI For Astronomy"), QStringLiteral("astronomy"));
}

}  // namespace quilmora
