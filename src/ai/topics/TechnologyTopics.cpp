#include "ai/SubjectTable.h"

namespace quilmora {

namespace {

// Software, data and design.
constexpr WrittenSubject technologyRows[] = {
    {u"software", u"Requirements, Architecture, UX, Testing, Deployment, Security, Maintenance"},
    {u"app", u"User Problem, Core Features, UX, Architecture, Authentication, Testing, Store Release"},
    {u"web", u"HTML and CSS, JavaScript, Accessibility, API, Security, SEO, Performance, Hosting"},
    {u"mobile",
     u"Native or Cross-Platform, Touch Interface, Offline Mode, Notifications, Testing, Battery Use, "
     u"App Stores"},
    {u"ai", u"Machine Learning, Deep Learning, NLP, Computer Vision, Data, Training, Deployment, Ethics"},
    {u"data", u"Collection, Cleaning, Storage, Modeling, Visualization, Governance, Privacy"},
    {u"security",
     u"Threat Model, Authentication, Encryption, Network Defense, Patching, Backups, "
     u"Incident Response"},
    {u"cloud", u"Compute, Storage, Networking, Security, Identity and Access, Cost Control, Disaster Recovery"},
    {u"devops",
     u"Version Control, Continuous Integration, Deployment, Infrastructure as Code, Monitoring, "
     u"Security"},
    {u"api", u"Resources, Endpoints, Authentication, Versioning, Error Handling, Rate Limits, Documentation"},
    {u"architecture", u"Patterns, Microservices, Monoliths, Event-Driven Design, Data Storage, Caching, Scalability"},
    {u"testing",
     u"Unit Tests, Integration Tests, End-to-End Tests, Test Data, Performance Tests, Security Tests, "
     u"Automation"},
    {u"deployment",
     u"Environments, Build Pipeline, Release Strategy, Database Migration, Monitoring, Rollback, "
     u"Release Notes"},
    {u"authentication",
     u"Passwords, Multi-Factor Login, Single Sign-On, Sessions, Tokens, Account Recovery, "
     u"Access Control"},
    {u"design", u"Research, Layout, Typography, Color, Imagery, Prototyping, Feedback"},
    {u"ux", u"User Research, Personas, User Flows, Wireframes, Usability Testing, Accessibility, Microcopy"},
};

}  // namespace

std::span<const WrittenSubject> technologySubjects() {
  return technologyRows;
}

}  // namespace quilmora
