#ifndef ORMELLE_POBASE_H
#define ORMELLE_POBASE_H

#include <cstddef>
#include <initializer_list>
#include <memory>
#include <vector>

#include <Inventor/lists/SoFieldList.h>
#include <Inventor/nodekits/SoBaseKit.h>
#include <Inventor/nodes/SoDrawStyle.h>
#include <Inventor/nodes/SoLightModel.h>

#include <Ormelle/PbDomain.h>
#include <Ormelle/PoSubKit.h>

class PbBase;
class PbDataMapping;
class SoCache;
class SoFieldSensor;
class SoGroup;
class SoIndexedFaceSet;
class SoIndexedLineSet;
class SoIndexedTriangleStripSet;
class SoMaterial;
class SoMaterialBinding;
class SoQuadMesh;
class SoSensor;
class SoShape;
class SoState;

/// Root of every representation: a node kit that turns its fields, its data objects and the traversal state into
/// ordinary scene geometry, lazily.
///
/// A change of a field or of a data object only marks the kit (`UPDATE_AT_TRAVERSAL`), and the next traversal that
/// reaches it rebuilds it before it descends into the parts; with `UPDATE_IMMEDIATE` every change rebuilds at once. A
/// traversal that finds nothing changed costs two cache tests.
///
/// Catalog; subclasses add their geometry behind `domainTransform`:
/// @code
/// this
///   catchActionCallback        SoCallback         looks for changes and rebuilds
///   alternateRep               SoSeparator
///     catchActionLevel2Callback  SoCallback       sets the outlining of text
///     appearance                 SoAppearanceKit  yours to style
///     domainTransform            SoMatrixTransform  kept by the kit, see PbDomain
/// @endcode
///
/// A subclass overrides rebuild(), which calls preRebuild() first and postRebuild() last and hands what it made to the
/// kit with `setPart`; addElementsAllCaches(), which reads every traversal element that the geometry depends on; and,
/// if it holds data objects, basicObjectChange(). Its constructor names the fields whose change calls for a rebuild
/// (watchField()) and the parts that a rebuild makes (ownPart()); that of a class that can be made ends with
/// beginWatching().
///
/// Kits live on the heap; each keeps the library initialised for as long as it lives.
class ORMELLE_API PoBase : public SoBaseKit {
  PO_KIT_ABSTRACT_HEADER(PoBase, SoBaseKit);
  PO_KIT_CATALOG_ENTRY_HEADER(catchActionCallback);
  PO_KIT_CATALOG_ENTRY_HEADER(alternateRep);
  PO_KIT_CATALOG_ENTRY_HEADER(catchActionLevel2Callback);
  PO_KIT_CATALOG_ENTRY_HEADER(appearance);
  PO_KIT_CATALOG_ENTRY_HEADER(domainTransform);

 public:
  enum UpdateMethodType {
    UPDATE_IMMEDIATE = 0,    ///< every change rebuilds at once
    UPDATE_AT_TRAVERSAL = 1  ///< a change marks the kit, the next traversal rebuilds it
  };
  /// What a written kit holds.
  enum NodeWriteFormat {
    WRITE_FIELDS = 0,   ///< its input fields, not its generated parts
    WRITE_GEOMETRY = 1  ///< its generated parts, not its input fields; attribute nodes write nothing (but in binary)
  };
  enum TextType {
    TEXT_3D = 0,         ///< text is solid
    TEXT_ANNOTATION = 1  ///< text is flat and always legible
  };

  /// Called around each rebuild with the data given and the kit.
  typedef void RebuildCallback(void* data, PoBase* kit);

  /// @name The library as a whole
  /// @{
  /// Starts the toolkit and the library, or counts one more user of it. Also see PoOrmelle.
  static void init();
  static int isInitialized();
  /// Gives back one init(); the last one takes the classes away unless nodes are still alive, which then do so. At
  /// count 0 it does nothing. The toolkit itself is never ended.
  static void finish();

  static void setNodeWriteFormat(NodeWriteFormat format) { m_nodeWriteFormat = format; }
  static NodeWriteFormat getNodeWriteFormat() { return m_nodeWriteFormat; }
  static void setTextType(TextType type) { m_textType = type; }
  static TextType getTextType() { return m_textType; }
  /// While on, text and boxes are built of what conversion to VRML 2 can carry, whatever the text type.
  static void setVRML2Mode(int on) { m_isVRML2Mode = on; }
  static int isVRML2Mode() { return m_isVRML2Mode; }
  /// How many threads a rebuild may use; 0 and below, the default: as many as the machine has cores. What is built
  /// doesn't depend on it.
  static void setNumThreads(int num);
  /// The number in force, at least 1.
  static int getNumThreads();
  /// @}

  static void* operator new(std::size_t size);
  static void operator delete(void* memory);

  void setUpdateMethod(UpdateMethodType method) { m_updateMethod = method; }
  UpdateMethodType getUpdateMethod() const { return m_updateMethod; }
  /// Whether a rebuild is pending.
  int isModified() const { return m_isModified; }
  /// Whether a rebuild has completed at least once, or generated parts were read from a file.
  int isBuilt() const { return m_isBuilt; }

  /// Makes the generated parts from the current inputs. Outside a traversal no attribute node is seen.
  virtual void rebuild();
  /// Announces a change that no field and no data object told: rebuilds or marks, by the update method.
  void touchKit();

  /// Whether the kit keeps its `domainTransform` part up to date; on at first.
  void enableDomainTransform(int enabled) { m_isDomainTransformEnabled = enabled; }
  /// The domain to use whatever the traversal state says; null goes back to the state's. Not owned.
  void setDomain(PbDomain* domain);
  /// The domain in use: the one set, else during a traversal the state's, else the default domain. Never null.
  const PbDomain* getDomain() const;

  /// @name One callback before and one after each rebuild
  /// Adding overwrites; removing only acts when function and data are those that were added.
  /// @{
  void addPreRebuildCallback(RebuildCallback* function, void* data);
  void addPostRebuildCallback(RebuildCallback* function, void* data);
  void removePreRebuildCallback(RebuildCallback* function, void* data);
  void removePostRebuildCallback(RebuildCallback* function, void* data);
  /// @}

  /// @name Leaving out what can hardly be seen
  /// Removes from the shapes below `group` every part whose transparency reaches
  /// `mapping->getTransparencyValueDeletedParts()`, and takes the transparencies away if all that is left is opaque.
  /// Coordinates and normals are not touched. Returns the last shape dealt with; null if there was nothing to do, as
  /// when `mapping` or `material` is null or the material has fewer transparencies than colours.
  /// @{
  static SoShape* deleteTransparencyParts(const PbDataMapping* mapping, const SoMaterial* material,
                                          SoMaterialBinding* binding, SoGroup* group);
  /// The same for one shape, child `childIndex` of `parent`, which the new shape replaces. `binding` is adjusted.
  static SoShape* deleteTransparencyParts(const PbDataMapping* mapping, const SoMaterial* material,
                                          SoMaterialBinding* binding, SoIndexedFaceSet* shape, SoGroup* parent,
                                          int childIndex);
  static SoShape* deleteTransparencyParts(const PbDataMapping* mapping, const SoMaterial* material,
                                          SoMaterialBinding* binding, SoQuadMesh* shape, SoGroup* parent,
                                          int childIndex);
  static SoShape* deleteTransparencyParts(const PbDataMapping* mapping, const SoMaterial* material,
                                          SoMaterialBinding* binding, SoIndexedTriangleStripSet* shape, SoGroup* parent,
                                          int childIndex);
  static SoShape* deleteTransparencyParts(const PbDataMapping* mapping, const SoMaterial* material,
                                          SoMaterialBinding* binding, SoIndexedLineSet* shape, SoGroup* parent,
                                          int childIndex);
  /// @}

  /// Tells the kit that `object`, to which it is connected, changed or died; see PbBase::getChangeType().
  virtual void basicObjectChange(PbBase* object);

  using SoBaseKit::setPart;
  SoNode* copy(SbBool copyConnections = FALSE) const override;
  SbBool affectsState() const override { return FALSE; }
  void search(SoSearchAction* action) override;
  void write(SoWriteAction* action) override;

 protected:
  /// `count` sensors that stand for the watched fields of one class of the chain.
  struct FieldSensorList {
    int count = 0;
    SoFieldSensor** sensors = nullptr;
  };

  /// `catchAction` stands in place of the frame's own look for changes when it isn't null.
  explicit PoBase(void (*catchAction)(void* kit, SoAction* action) = nullptr);
  ~PoBase() override;

  /// Held to the end of every rebuild that a traversal causes, so that at most one kit rebuilds at a time.
  static SbThreadMutex& rebuildMutex() { return classMutex; }

  // --- watched fields ---
  /// A field that the geometry depends on. It is left out of a file of geometry.
  void watchField(SoField& field) { m_watchedFields.append(&field); }
  /// A part that a rebuild makes. It is left out of a file of fields.
  void ownPart(SoSFNode& part) { m_ownParts.append(&part); }
  /// Starts to watch the fields.
  void beginWatching() { setUpConnections(TRUE, TRUE); }
  /// All that are watched, in their order.
  const SoFieldList& watchedFields() const { return m_watchedFields; }
  /// Makes `count` immediate sensors that report to this kit.
  void createFieldSensorList(int count, FieldSensorList* list);
  static void deleteFieldSensorList(FieldSensorList* list);
  /// Attaches sensor i to field i.
  static void attachFieldSensorList(const FieldSensorList& list, const SoFieldList& fields);
  static void detachFieldSensorList(const FieldSensorList& list);
  /// Keeps each field out of the file being written, see leaveOutOfFile().
  void setListFieldsDefault(const SoFieldList& fields);
  /// Whether `field` is among those reported since the list was last emptied; only told while storing is on.
  int isFieldHasChanged(const SoField* field) const;
  /// Whether any field or connection changed since the last rebuild.
  int isAnyFieldsHasChanged() const { return m_isAnyFieldsHasChanged; }
  /// Whether something changed since the list was last emptied, and nothing but fields among these; only told while
  /// storing is on.
  int haveOnlyFieldsChanged(std::initializer_list<const SoField*> fields) const;
  void emptyListFieldsChanged() { m_listFieldsChanged.truncate(0); }
  void storeFieldsChanged(int on) { m_storeFieldsChanged = on; }

  // --- data objects ---
  /// Moves the connection of this kit; either may be null.
  void changeConnection(PbBase* oldObject, PbBase* newObject);
  /// Clears `*held` when `object` died, and rebuilds or marks.
  virtual void manageBasicObjectChange(PbBase* object, PbBase** held);

  // --- the rebuild cycle ---
  virtual void preRebuild();
  virtual void postRebuild();
  /// Reads every element that the geometry depends on through `PoXElement::get(getState())`, at each traversal, so
  /// that the caches of enclosing separators depend on them too.
  virtual void addElementsAllCaches();
  int isStateValid() const { return m_isStateValid; }
  void setState(SoAction* action);
  /// The state of the running traversal; null outside.
  SoState* getState() const { return m_state; }
  void setCacheAlwaysRebuild(int on) { m_isCacheAlwaysRebuild = on; }
  int isCacheAlwaysRebuild() const { return m_isCacheAlwaysRebuild; }
  int isCacheValid() const { return m_isCacheValid; }
  void rebuildCache(SoCache** cache);
  /// The cache that watches what the geometry depends on; preRebuild() adds elements to it. May be null.
  SoCache* getAllCache() const { return m_allCache; }

  // --- domain ---
  int isDomainTransformEnabled() const { return m_isDomainTransformEnabled; }
  void setDomainUsedForRebuild(int used) { m_isDomainUsedForRebuild = used; }
  int isDomainUsedForRebuild() const { return m_isDomainUsedForRebuild; }
  void setDomainTransform(const PbDomain* domain);

  // --- small helpers ---
  void setLightModel(SoLightModel::Model model);
  void setDrawStyleAK(const SbString& partName, SoDrawStyle::Style style);
  /// Keeps a field, and for a part that is a kit all that is in it, out of the file being written. For
  /// setDefaultOnNonWritingFields(): the flags are as before once the kit is written.
  void leaveOutOfFile(SoField& field);
  /// Says that the kit itself fills this part of `appearance`, so that it isn't written with the fields.
  void addGeneratedAppearance(const SbName& part);
  /// The same for the kit of appearance in another part: of a file of fields, it holds what the application styled.
  void leaveStyleOutOfFile(SoSFNode& style, const std::vector<SbName>& generated);

  SbBool setPart(int partNumber, SoNode* node) override;
  SbBool setUpConnections(SbBool onOff, SbBool doItAlways = FALSE) override;
  void setDefaultOnNonWritingFields() override;
  void copyContents(const SoFieldContainer* from, SbBool copyConnections) override;
  SbBool readInstance(SoInput* in, unsigned short flags) override;

 private:
  class SavedFlags;
  class Quiet;

  static void fieldSensorCB(void* kit, SoSensor* sensor);
  static void catchActionCB(void* kit, SoAction* action);
  static void catchActionLevel2CB(void* unused, SoAction* action);
  void catchAction(SoAction* action);
  void lookForChanges(SoAction* action);
  void rebuildIfStale();
  void refreshDomainTransform();
  void rebuildNow();
  void rebuildOrMark();
  void noteChange(SoField* field);
  void connectCallbackParts();
  void dropStrayParts(int parentNumber);

  static NodeWriteFormat m_nodeWriteFormat;
  static TextType m_textType;
  static int m_isVRML2Mode;

  SoFieldList m_watchedFields;
  SoFieldList m_ownParts;
  FieldSensorList m_watchSensors;
  SoFieldList m_listFieldsChanged;  ///< each once; null stands for a change that no field told
  int m_storeFieldsChanged = 0;
  int m_isStateValid = 0;
  UpdateMethodType m_updateMethod = UPDATE_AT_TRAVERSAL;
  int m_isModified = 0;
  int m_isBuilt = 0;
  int m_isDomainTransformEnabled = 1;
  int m_isDomainUsedForRebuild = 1;
  int m_isAnyFieldsHasChanged = 0;
  PbDomain m_defaultDomain;
  PbDomain* m_domain = &m_defaultDomain;
  void (*m_customCatchActionCB)(void*, SoAction*) = nullptr;
  int m_isCacheAlwaysRebuild = 0;
  SoState* m_state = nullptr;
  SoCache* m_allCache = nullptr;
  SoCache* m_domainCache = nullptr;
  int m_isCacheValid = 0;
  int m_isGeometryFromFile = 0;
  RebuildCallback* m_preRebuildCB = nullptr;
  RebuildCallback* m_postRebuildCB = nullptr;
  void* m_preRebuildData = nullptr;
  void* m_postRebuildData = nullptr;
  std::vector<SbName> m_generatedAppearance;
  std::unique_ptr<SavedFlags> m_savedFlags;
};

#endif
