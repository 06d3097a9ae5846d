#pragma once

class QWizardPage;
class ZVTolvar;

/// The device controller of the wizard that contains \a page. Pages call this each time they need the
/// controller and store no pointer to it. The wizard window defines this function, so that pages never
/// include the wizard window. Do not call it before the page is in the wizard.
ZVTolvar *wizardController(const QWizardPage *page);
