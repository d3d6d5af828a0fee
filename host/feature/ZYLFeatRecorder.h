// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLFeatListChange.h"
#include "ZYLFeatMoveChange.h"
#include "ZYLFeatRangeChange.h"
#include "ZYLFeatReferenceChange.h"
#include "ZYLFeatReplaceChange.h"
#include "ZYLFeatTransaction.h"
#include "ZYLFeatValueChange.h"
#include "ZYLFeatureExport.h"

#include <QCoreApplication>
#include <QString>

#include <concepts>
#include <memory>
#include <type_traits>
#include <vector>

/// The one-line way for model code to make an undoable edit. Each operation records the
/// edit as a change in the current transaction (`ZYLFeatTransaction::GetCurrent()`, the
/// innermost open transaction of any container) and then makes it:
///
/// ```cpp
/// void ZYLTPCourse::SetWidth(double width) { ZYLFeatRecorder::SetValue(d->width, width); }
/// void ZYLTPCourse::RemovePoint(int i)     { ZYLFeatRecorder::Remove(d->points, i); }
/// ```
///
/// Every operation first checks that a transaction is open and that its arguments are
/// valid; otherwise it throws `ZYLSysException` (for no transaction: "... outside a
/// transaction") and changes nothing. Lists are `std::vector`s of any movable element type;
/// with `std::unique_ptr` elements an object moved out of the list (`Remove`, `Replace`)
/// stays alive at the same address, owned by the change, until the change leaves the
/// history, and undo puts that same object back at the same index. Null `std::unique_ptr`
/// or pointer elements are refused.
///
/// Fields, arrays and lists passed here must stay at their address as long as the history
/// holds changes of them, which holds for members of model objects that are only removed
/// through the recorder.
class ZYLFEATURE_EXPORT ZYLFeatRecorder {
    Q_DECLARE_TR_FUNCTIONS(ZYLFeatRecorder)
public:
    ZYLFeatRecorder() = delete;

    /// Returns the current transaction; throws "<what> outside a transaction" when none is
    /// open, and a message of the transaction when it cannot record now. `what` is an
    /// untranslated text, translated only when the exception is thrown.
    static ZYLFeatTransaction *RequireTransaction(const char *what);

    /// Records and makes the assignment `field = newValue`. Setting the value a field
    /// already has records nothing. A repeated set of the same field merges into its
    /// earlier change of the same transaction (which keeps the first old value) when only
    /// value changes of other fields not overlapping it were recorded in between (and the
    /// earlier change is among the last 16); a merge that brings the
    /// field back to its first value drops the change. `newValue` is moved in and the old
    /// value moved into the change, so replacing a whole array this way copies nothing:
    /// this is the efficient way to record an edit of a million points as one change.
    template<class T>
    static void SetValue(T &field, std::type_identity_t<T> newValue)
    {
        ZYLFeatTransaction *transaction = RequireTransaction(QT_TR_NOOP("Setting a value"));
        if constexpr (std::equality_comparable<T>) {
            if (ZYLFeatValueChange<T>::Same(field, newValue))
                return;
        }
        if (ZYLFeatChange *found = transaction->FindMergeableValue(typeid(T), &field, sizeof(T))) {
            auto *change = static_cast<ZYLFeatValueChange<T> *>(found);
            change->MergeLaterValue(std::move(newValue));
            if (change->IsNoOp())
                transaction->DropChange(change);
            return;
        }
        transaction->Record(std::make_unique<ZYLFeatValueChange<T>>(field, std::move(newValue)));
    }

    /// Records and makes the overwrite of `values.size()` elements of `array` starting at
    /// `first`. Only the overwritten run is kept, so the change costs as much as the run.
    template<class T>
    static void SetRange(std::vector<T> &array, qsizetype first, std::vector<T> values)
    {
        ZYLFeatTransaction *transaction = RequireTransaction(QT_TR_NOOP("Setting a range of values"));
        CheckRange(first, qsizetype(values.size()), qsizetype(array.size()));
        if (values.empty())
            return;
        transaction->Record(std::make_unique<ZYLFeatRangeChange<T>>(array, first, std::move(values)));
    }

    /// Records and makes the change of a field that holds a counted reference on shared
    /// geometry: `field` ends pointing to `newValue` (may be null) with the owner's
    /// reference moved to it; the old geometry stays alive while the change is in the history.
    template<class T>
    static void SetReference(const T *&field, const std::type_identity_t<T> *newValue)
    {
        ZYLFeatTransaction *transaction = RequireTransaction(QT_TR_NOOP("Setting a reference"));
        if (field == newValue)
            return;
        transaction->Record(std::make_unique<ZYLFeatReferenceChange<T>>(field, newValue));
    }

    /// Records and makes the insertion of `element` at `index` (0 to size) of `list`.
    template<class E>
    static void Insert(std::vector<E> &list, qsizetype index, std::type_identity_t<E> element)
    {
        ZYLFeatTransaction *transaction = RequireTransaction(QT_TR_NOOP("Inserting into a list"));
        CheckIndex(index, qsizetype(list.size()) + 1);
        CheckNotNull(element);
        transaction->Record(std::make_unique<ZYLFeatListChange<E>>(list, index, std::move(element)));
    }

    /// Records and makes the removal of the element at `index` of `list`; the change keeps
    /// the element.
    template<class E>
    static void Remove(std::vector<E> &list, qsizetype index)
    {
        ZYLFeatTransaction *transaction = RequireTransaction(QT_TR_NOOP("Removing from a list"));
        CheckIndex(index, qsizetype(list.size()));
        transaction->Record(std::make_unique<ZYLFeatListChange<E>>(list, index));
    }

    /// Records and makes the replacement of the element at `index` of `list` by `element`;
    /// the change keeps the replaced element.
    template<class E>
    static void Replace(std::vector<E> &list, qsizetype index, std::type_identity_t<E> element)
    {
        ZYLFeatTransaction *transaction = RequireTransaction(QT_TR_NOOP("Replacing in a list"));
        CheckIndex(index, qsizetype(list.size()));
        CheckNotNull(element);
        transaction->Record(std::make_unique<ZYLFeatReplaceChange<E>>(list, index, std::move(element)));
    }

    /// Records and makes the move of the element at `from` to index `to` of `list` (both
    /// indexes of existing elements; the elements between shift by one). Moving an
    /// element to where it is records nothing.
    template<class E>
    static void Move(std::vector<E> &list, qsizetype from, qsizetype to)
    {
        ZYLFeatTransaction *transaction = RequireTransaction(QT_TR_NOOP("Moving in a list"));
        CheckIndex(from, qsizetype(list.size()));
        CheckIndex(to, qsizetype(list.size()));
        if (from == to)
            return;
        transaction->Record(std::make_unique<ZYLFeatMoveChange<E>>(list, from, to));
    }

    /// Records a custom change and makes it by calling its `Redo` (see `ZYLFeatChange`).
    /// Throws for a null change.
    static void Record(std::unique_ptr<ZYLFeatChange> change);

private:
    template<class E>
    static void CheckNotNull(const E &element)
    {
        if constexpr (std::is_pointer_v<E> || std::is_null_pointer_v<E>
                      || requires { typename E::element_type; element.get(); }) {
            if (element == nullptr)
                ThrowNullElement();
        }
    }
    static void CheckIndex(qsizetype index, qsizetype end);
    static void CheckRange(qsizetype first, qsizetype count, qsizetype size);
    [[noreturn]] static void ThrowNullElement();
};
