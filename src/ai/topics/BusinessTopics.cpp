#include "ai/SubjectTable.h"

namespace quilmora {

namespace {

// Companies, work and money.
constexpr WrittenSubject businessRows[] = {
    {u"marketing", u"Digital Marketing, Brand Strategy, Content, Analytics, Social Media, SEO, Email, Budget"},
    {u"business", u"Business Model, Customers, Sales, Marketing, Finance, Operations, Team, Strategy"},
    {u"startup", u"Problem Worth Solving, Product, Customer Interviews, Marketing, Team, Fundraising, Runway"},
    {u"product", u"User Research, Roadmap, UX, Pricing, Feature Priorities, Launch Plan, Metrics"},
    {u"strategy", u"Vision, Market Position, Competitors, Differentiation, Priorities, Trade-Offs, Metrics"},
    {u"sales",
     u"Lead Generation, Qualification, Discovery Calls, Proposals, Negotiation, Closing, "
     u"Account Growth"},
    {u"finance", u"Cash Flow, Budget, Revenue Streams, Fixed Costs, Investing, Taxes, Reporting"},
    {u"project", u"Objectives, Scope, Stakeholders, Planning, Budget, Team, Risks"},
    {u"agile",
     u"Product Backlog, Sprint Planning, Daily Standup, Sprint Review, Retrospective, Estimation, "
     u"Roles"},
    {u"planning", u"Objectives, Milestones, Dependencies, Resources, Schedule, Risk Buffers, Review Points"},
    {u"team", u"Roles, Hiring, Onboarding, Communication, Decision Making, Feedback, Growth"},
    {u"brand", u"Purpose, Audience, Positioning, Name and Logo, Voice, Visual Identity, Guidelines"},
    {u"presentation", u"Audience, Core Message, Opening Hook, Storyline, Slide Design, Delivery, Questions"},
    {u"budget", u"Income, Fixed Costs, Variable Costs, Savings, Emergency Fund, Debt, Monthly Review"},
    {u"goals", u"Vision, Health, Learning, Relationships, Finance, Habits, Quarterly Review"},
    {u"careers", u"Engineering, Medicine, Law, Education, Journalism, Design, Software, Finance"},
    {u"occupation", u"Daily Tasks, Required Skills, Training, Salary Range, Work Environment, Career Path"},
    {u"investing", u"Risk Tolerance, Index Funds, Stocks, Bonds, Real Estate, Diversification, Rebalancing"},
    {u"entrepreneurship", u"Opportunity, Validation, Business Model, Funding, Sales, Team, Resilience"},
    {u"seo",
     u"Keyword Research, On-Page Content, Site Speed, Internal Links, Backlinks, Local Search, "
     u"Rank Tracking"},
    {u"social media", u"Platforms, Content Calendar, Engagement, Paid Ads, Analytics, Influencers"},
};

}  // namespace

std::span<const WrittenSubject> businessSubjects() {
  return businessRows;
}

}  // namespace quilmora
