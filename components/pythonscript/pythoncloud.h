// PythonCloud: a point cloud of the document as a script sees it, and PythonDocument, the list of
// them.
//
//   cloud = cowl.document[0]
//   for block in cloud.blocks():
//       block.points[:, 2] += 1.0
//
// Arrays show the storage itself, without a copy. After a command that takes points away, adds some
// or moves them, arrays that were taken before keep the points of before and no longer belong to
// the cloud. Needs the interpreter's lock. Main thread.
#pragma once

#include <pybind11/numpy.h>
#include <pybind11/pybind11.h>

#include "interfaces/IPointBlocks.h"
#include "interfaces/IPointCloud.h"
#include "orobasictypes/iptr.h"

class PythonCloud {
 public:
  static void define(pybind11::module_& module);

  // A Cloud, the number of one, or a name; KeyError or IndexError where there is none.
  static PythonCloud of(pybind11::handle value);

  explicit PythonCloud(IPointCloud* cloud) : cloud_(cloud) {}

  IPointCloud* object() const { return cloud_.get(); }
  pybind11::str name() const;
  int64_t count() const { return cloud_->count(); }

  // All points, of the shape (count, 3). Where they lie in one piece it is the storage itself, else
  // a copy that cannot be written to.
  pybind11::array points() const;
  void setPoints(const pybind11::object& points) const;
  // The storage itself, of the shape (count, 3) and the type uint8; None without colours.
  pybind11::object colors() const;
  // One flag for each point; a copy.
  pybind11::array_t<bool> selection() const;
  void setSelection(const pybind11::object& flags) const;

 private:
  IPtr<IPointCloud> cloud_;
};
