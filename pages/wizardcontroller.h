#pragma once

class QWizardPage;
class ZVTolvar;

/// The device controller of the wizard that \a page stands in. Pages ask anew each time they need it and keep
/// no pointer of their own; the frame defines it, so that pages never include the frame. Not to be called
/// before the page stands in the wizard.
ZVTolvar *wizardController(const QWizardPage *page);
