#ifndef ORMELLE_PIWRITEPREPARATION_H
#define ORMELLE_PIWRITEPREPARATION_H

/// A look at the whole scene before it is written.
///
/// A kit must be rebuilt, with the attribute nodes before it in force, before its references are counted. But the
/// toolkit counts without a traversal: groups pass on `addWriteReference`, which has no action and no state. So the
/// write action's method for nodes is led through here, and the start of each write first traverses the scene.
class PiWritePreparation {
 public:
  /// To be called whenever the toolkit may have been started anew.
  static void install();
};

#endif
